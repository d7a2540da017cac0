#include "formats/xml/TimedText10.h"

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>

#include "formats/xml/TimedTextNodes.h"
#include "formats/xml/TimedTextTime.h"
#include "model/Arithmetic.h"
#include "model/GlobalSettings.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"
#include "xml/TiXMLDocument.h"

namespace mova {
namespace {

// --- Reading

constexpr double defaultDuration = 3000.0;  // milliseconds

/// A span lists all elements below it and visits each of them, and spans among these do the same again, so that the
/// text of nested spans doubles with each level. A document may take this many visits and units of text for elements
/// in spans; a paragraph that would take more is an error.
class SpanAllowance {
 public:
  explicit SpanAllowance(size_t documentLength) : left_(1000000 + 8 * documentLength) {}

  void Take(size_t count) {
    if (count > left_) throw std::runtime_error("spans are nested too deep");
    left_ -= count;
  }

 private:
  size_t left_;
};

class ParagraphText {
 public:
  static WString Of(const XMLNode& p, SpanAllowance& allowance) {
    ParagraphText text(allowance);
    text.AppendChildren(p);
    return std::move(text.text_);
  }

 private:
  explicit ParagraphText(SpanAllowance& allowance) : allowance_(allowance) {}

  void AppendChildren(const XMLNode& node) {
    for (const XMLNode* child = node.FirstChild(); child; child = child->NextSibling()) {
      if (child->ToText()) {
        text_ += valueOf(*child);
      } else if (const XMLElement* element = child->ToElement()) {
        if (isNamed(element, "br")) {
          text_ += u'\n';
        } else if (isNamed(element, "span")) {
          AppendSpan(*element);
        } else {
          AppendChildren(*element);
        }
      }
    }
  }

  void AppendSpan(const XMLElement& span) {
    // These two tests are the wrong way round, on purpose: "italic" opens no italics, and "normal" does.
    const bool italic = HasOtherThan(span, "tts:fontStyle", u"italic");
    if (italic) text_ += u"<i>";
    const auto color = attribute(span, "tts:color");
    if (color) text_ += u"<font color=\"" + *color + u"\">";
    const bool bold = HasOtherThan(span, "tts:fontWeight", u"bold");
    if (bold) text_ += u"<b>";

    // With elements below it, the texts directly in the span are passed over, on purpose.
    const std::vector<const XMLElement*> elements = collectAllElements(&span);
    allowance_.Take(elements.size());
    for (const XMLElement* element : elements) {
      const size_t before = text_.size();
      if (isNamed(element, "br")) {
        text_ += u'\n';
      } else if (isNamed(element, "span")) {
        AppendSpan(*element);
      } else {
        text_ += elementInnerText(*element);
      }
      allowance_.Take(text_.size() - before);
    }
    if (elements.empty()) text_ += elementInnerText(span);

    if (italic) text_ += u"</i>";
    if (color) text_ += u"</font>";
    if (bold) text_ += u"</bold>";  // not "</b>", on purpose
  }

  static bool HasOtherThan(const XMLElement& element, const char* name, WStringView value) {
    const auto present = attribute(element, name);
    return present && *present != value;
  }

  SpanAllowance& allowance_;
  WString text_;
};

std::vector<const XMLElement*> paragraphElements(const XMLNode* body) {
  std::vector<const XMLElement*> elements = collectElementsDeep(body, "p");
  return elements.empty() ? collectElementsDeep(body, "ttml:p") : elements;
}

WString withoutRunsOfBlanks(WStringView text) {
  return replaceAll(replaceAll(text, u"   ", u" "), u"  ", u" ");
}

WString withoutBlankLines(WString text) {
  while (findText(text, u"\r\n\r\n") != WString::npos) replaceAllInPlace(text, u"\r\n\r\n", u"\r\n");
  return text;
}

TimeCode timeOf(WStringView expression) {
  const bool hasMilliseconds = expression.size() == 12 && expression[8] == u'.';
  const auto time = parseTimeExpression(expression, !hasMilliseconds);
  if (!time) throw std::runtime_error("a clock time has fewer than four fields");
  return *time;
}

TimeCode operator+(const TimeCode& time, double milliseconds) {
  return {time.TotalMilliseconds + milliseconds};
}

/// Reads one "p" after the other.
class ParagraphReader {
 public:
  ParagraphReader(Subtitle& subtitle, WString defaultStyle)
      : subtitle_(subtitle), defaultStyle_(std::move(defaultStyle)), allowance_(subtitle.Header.size()) {}

  void Read(const XMLElement& p) {
    const WString text = withoutRunsOfBlanks(ParagraphText::Of(p, allowance_));
    const WString begin = attributeOrEmpty(p, "begin");
    const WString end = attributeOrEmpty(p, "end");
    const WString duration = attributeOrEmpty(p, "dur");
    const TimeCode start = begin.empty() ? TimeCode{lastEndSeconds_ * 1000.0} : timeOf(begin);
    const TimeCode finish = !end.empty()        ? timeOf(end)
                            : !duration.empty() ? start + timeOf(duration).TotalMilliseconds
                                                : start + defaultDuration;
    lastEndSeconds_ = finish.TotalMilliseconds / 1000.0;
    if (previous_ && millisecondsOf(*previous_) == cutToInt64(start.TotalMilliseconds) % 1000) {
      AppendLines(text);
    } else {
      Begin(p, text, start, finish);
    }
  }

 private:
  static int64_t millisecondsOf(const Paragraph& paragraph) {
    return cutToInt64(paragraph.StartTime.TotalMilliseconds) % 1000;
  }

  void Begin(const XMLElement& p, const WString& text, TimeCode start, TimeCode finish) {
    Paragraph paragraph(start, finish, text);
    paragraph.Style = attribute(p, "style").value_or(defaultStyle_);
    if (attributeOrEmpty(p, "region") == u"top") paragraph.Text.insert(0, u"{\\an8}");
    if (const XMLElement* div = p.Parent()->ToElement(); div && isNamed(div, "div")) {
      const auto language = attribute(*div, "xml:lang");
      paragraph.Language = language ? *language : attributeOrEmpty(*div, "lang");
    }
    paragraph.Extra = extraFromStyleAndLanguage(paragraph);
    paragraph.Text = withoutBlankLines(trim(paragraph.Text));
    previous_ = &subtitle_.Append(std::move(paragraph));
  }

  /// The text so far is trimmed and has no blank lines: looking at what is new will do.
  void AppendLines(const WString& text) {
    WString& lines = previous_->Text;
    const WString added = withoutBlankLines(trimEnd(u"\r\n" + text));
    lines += lines.empty() ? trimStart(added) : added;
  }

  Subtitle& subtitle_;
  WString defaultStyle_;
  SpanAllowance allowance_;
  Paragraph* previous_ = nullptr;
  double lastEndSeconds_ = 0.0;
};

// --- Writing

WString skeleton() {
  return uR"(<?xml version="1.0" encoding="utf-8" ?>
<tt xmlns="http://www.w3.org/ns/ttml" xmlns:ttp="http://www.w3.org/ns/ttml#parameter" ttp:timeBase="media" xmlns:tts="http://www.w3.org/ns/ttml#style" xml:lang="en" xmlns:ttm="http://www.w3.org/ns/ttml#metadata">
   <head>
       <metadata>
           <ttm:title></ttm:title>
      </metadata>
)" + timedTextParameters() +
         uR"(       <styling>
         <style id="s0" tts:backgroundColor="black" tts:fontStyle="normal" tts:fontSize="16" tts:fontFamily="sansSerif" tts:color="white" />
      </styling>
   </head>
   <body style="s0">
       <div />
   </body>
</tt>)";
}

/// The document of a script's header: a new one without styles. (No style of a script is taken over: they are looked
/// for in a "head", which a script has not.)
WString headerForScript(const WString& text) {
  TiXMLDocument document(text);
  if (XMLNode* styling = findNodeDeep(findNodeDeep(document.RootElement(), "head"), "styling")) {
    styling->DeleteChildren();
  }
  tinyxml2::XMLPrinter printer;
  document.Print(&printer);
  return toWide(printer.CStr());
}

/// Where the paragraphs go: the first "div" of the body, or else the first child of the body.
XMLNode* paragraphContainer(TiXMLDocument& document) {
  XMLNode* body = findNodeDeep(document.RootElement(), "body");
  if (XMLNode* div = findNodeDeep(body, "div")) return div;
  return body ? body->FirstChild() : nullptr;
}

/// Makes the "p" elements of a document.
class ParagraphWriter {
 public:
  ParagraphWriter(TiXMLDocument& document, WString defaultStyle, const WString& header)
      : document_(document), defaultStyle_(std::move(defaultStyle)), hasHeader_(!header.empty()) {
    for (WString& id : getStyleIdsFromHeader(header)) styleIds_.insert(std::move(id));
  }

  XMLElement* NewParagraph(const Paragraph& paragraph) {
    XMLElement* p = document_.NewElement("p");
    appendTextLines(*p, paragraph.Text, false);
    setAttribute(*p, "begin", formatTimeExpression(paragraph.StartTime));
    setAttribute(*p, "id", u"p" + intToWStr(number_++, u"%d"));
    setAttribute(*p, "end", formatTimeExpression(paragraph.EndTime));
    const WStringView style = paragraph.Style;
    if (hasHeader_ && !style.empty() && style != defaultStyle_ && styleIds_.contains(style)) {
      setAttribute(*p, "style", style);
    }
    return p;
  }

 private:
  TiXMLDocument& document_;
  WString defaultStyle_;
  bool hasHeader_;
  std::set<WString, std::less<>> styleIds_;
  int32_t number_ = 0;
};

/// A "div" for each language, behind the paragraphs that have none. A paragraph whose language is not in lower case and
/// trimmed belongs to no "div" and is lost, on purpose.
void appendByLanguage(TiXMLDocument& document, XMLNode& target, const Subtitle& subtitle,
                      const std::vector<WString>& languages, ParagraphWriter& writer) {
  std::map<WStringView, std::vector<const Paragraph*>> byLanguage;
  for (const auto& paragraph : subtitle.Paragraphs) byLanguage[paragraph->Language].push_back(paragraph.get());
  for (const Paragraph* paragraph : byLanguage[u""]) target.InsertEndChild(writer.NewParagraph(*paragraph));
  XMLNode* parent = target.Parent();
  if (target.NoChildren()) parent->DeleteChild(&target);
  for (const WString& language : languages) {
    XMLElement* div = document.NewElement("div");
    setAttribute(*div, "xml:lang", language);
    parent->InsertEndChild(div);
    for (const Paragraph* paragraph : byLanguage[language]) div->InsertEndChild(writer.NewParagraph(*paragraph));
  }
}

}  // namespace

WString extraFromStyleAndLanguage(const Paragraph& paragraph) {
  const auto orDash = [](WStringView text) { return text.empty() ? WStringView(u"-") : text; };
  WString extra(orDash(cText(paragraph.Style)));
  extra += u" / ";
  extra += orDash(cText(paragraph.Language));
  return extra;
}

std::vector<WString> getUsedLanguages(const Subtitle& subtitle) {
  std::vector<WString> languages;
  std::set<WString> seen;
  for (const auto& paragraph : subtitle.Paragraphs) {
    if (paragraph->Language.empty()) continue;
    WString language = trim(wStrToLower(WString(paragraph->Language)));
    if (seen.insert(language).second) languages.push_back(std::move(language));
  }
  return languages;
}

bool isScriptHeader(WStringView header) {
  return findText(header, u"[V4+ Styles]") != WStringView::npos ||
         findText(header, u"[V4 Styles]") != WStringView::npos;
}

bool TimedText10::Recognizes(const Lines& lines, const WString&) {
  const WString& text = joinedText(lines);
  // The family of 2006 is another format's.
  if (findText(text, u"xmlns:tts=\"http://www.w3.org/2006/04") != WString::npos) return false;
  if (findText(text, u"http://www.w3.org/ns/ttml") == WString::npos) return false;
  const TiXMLDocument* document = parsedXml(lines);
  if (!document) return false;
  const XMLNode* body = findNodeDeep(document->RootElement(), "body");
  return findNodeDeep(body, "p") || findNodeDeep(body, "ttml:p");
}

void TimedText10::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  const TiXMLDocument* document = parsedXml(lines);
  const XMLElement* root = document ? document->RootElement() : nullptr;
  const XMLNode* body = root ? findNodeDeep(root, "body") : nullptr;
  if (!body) return;

  // The rate alone: a multiplier is not looked at.
  auto rate = attribute(*root, "ttp:frameRate");
  if (!rate) rate = attribute(*root, "frameRate");
  if (rate) GlobalSettings.FrameRate = wideToDouble(*rate);
  timedTextTimeFormat = TimedTextTimeFormat::Frames;
  subtitle.Header = joinedText(lines);

  ParagraphReader reader(subtitle, attributeOrEmpty(*root, "style"));
  for (const XMLElement* p : paragraphElements(body)) {
    try {
      reader.Read(*p);
    } catch (const std::exception&) {
      ++ErrorCount;
    }
  }
  subtitle.Renumber(1);
}

WString TimedText10::WriteText(const Subtitle& subtitle, const WString&) {
  WString header = subtitle.Header;
  bool hasHead = !header.empty() && findNodeDeep(TiXMLDocument(header).RootElement(), "head");
  if (!hasHead && isScriptHeader(header)) {
    header = headerForScript(WriteText(Subtitle(), u"tt"));
    hasHead = true;
  }

  TiXMLDocument document(hasHead ? header : skeleton());
  if (hasHead) {
    if (XMLNode* container = paragraphContainer(document)) {
      container->DeleteChildren();
    } else {
      document.Parse(skeleton());
    }
  }
  const XMLElement* body = firstChildElementNamed(document.RootElement(), "body");
  const auto bodyStyle = body ? attribute(*body, "style") : std::nullopt;
  ParagraphWriter writer(document, bodyStyle ? *bodyStyle : newGuid(), header);

  XMLNode& target = *paragraphContainer(document);
  const std::vector<WString> languages = getUsedLanguages(subtitle);
  DocumentStream stream;
  if (languages.empty()) {
    // (A target that is no element prints no children.)
    stream = streamOf(document, target.ToElement(), subtitle.Paragraphs.size(),
                      [&](size_t i) { return writer.NewParagraph(*subtitle.Paragraphs[i]); });
  } else {
    appendByLanguage(document, target, subtitle, languages, writer);
  }
  stream.rewrite = dropNamespaceLeftovers;
  return documentToText(document, stream);
}

}  // namespace mova
