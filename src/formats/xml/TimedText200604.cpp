#include "formats/xml/TimedText200604.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include "formats/FrameTime.h"
#include "formats/xml/TimedTextTime.h"
#include "movautil/MovaUtil.h"
#include "text/Markup.h"
#include "text/Strings.h"
#include "xml/TiXMLDocument.h"

namespace mova {
namespace {

/// Some producers leave out the blank between two attributes, which would stop the parser.
WString repairedText(const Lines& lines) {
  return replaceAll(joinedText(lines), u"http://www.w3.org/2006/04/ttaf1#styling\"xml:lang",
                    u"http://www.w3.org/2006/04/ttaf1#styling\" xml:lang");
}

std::shared_ptr<const TiXMLDocument> repairedDocument(const Lines& lines) {
  return std::make_shared<const TiXMLDocument>(repairedText(lines));
}

/// Null if the lines don't parse.
const XMLElement* rootOf(const Lines& lines) {
  return lines.Derived<&repairedDocument>()->RootElement();
}

TimeCode timeOf(WStringView expression) {
  const auto time = parseTimeExpression(expression, false);
  if (!time) throw std::runtime_error("a clock time has fewer than four fields");
  return *time;
}

WString spanText(const XMLElement& span) {
  const bool isItalic = attributeOrEmpty(span, "fontStyle") == u"italic";  // the name without a prefix only
  WString text = isItalic ? u"<i>" : u"";
  for (const XMLNode* child = span.FirstChild(); child; child = child->NextSibling()) {
    if (const XMLElement* element = child->ToElement()) {
      text += isNamed(element, "br") ? u"\n" : elementInnerText(*element);
    } else {
      text += valueOf(*child);
    }
  }
  if (isItalic) text += u"</i>";
  return text;
}

WString textOf(const XMLElement& p) {
  WString text;
  for (const XMLNode* child = p.FirstChild(); child; child = child->NextSibling()) {
    const XMLElement* element = child->ToElement();
    if (!element) {
      text += valueOf(*child);
    } else if (isNamed(element, "br")) {
      text += u'\n';
    } else {
      text += isNamed(element, "span") ? spanText(*element) : elementInnerText(*element);
    }
  }
  replaceAllInPlace(text, u"\r\n</i>", u"</i>\r\n");
  replaceAllInPlace(text, u"<i></i>", u"");
  return text;
}

/// An element without "begin", or without both "end" and "dur", is passed over.
void readParagraph(Subtitle& subtitle, const XMLElement& p) {
  const auto begin = attribute(p, "begin");
  const auto end = attribute(p, "end");
  const auto duration = attribute(p, "dur");
  if (!begin || (!end && !duration)) return;
  WString text = textOf(p);
  const TimeCode start = timeOf(*begin);
  const TimeCode finish = end ? timeOf(*end) : TimeCode{start.TotalMilliseconds + timeOf(*duration).TotalMilliseconds};
  subtitle.Append({start, finish, std::move(text)});
}

bool isBelowATenth(const TimeCode& time) {
  return time.Fields().milliseconds < 100;
}

void takeAsHundredths(TimeCode& time) {
  const TimeFields fields = time.Fields();
  const int64_t seconds = (fields.hours % 24 * 60 + fields.minutes) * 60 + fields.seconds;
  time.TotalMilliseconds = static_cast<double>(seconds * 1000 + 10 * fields.milliseconds);
}

/// The first child named "body", or else the first that is found in the children, one after the other.
const XMLElement* bodyOf(const XMLElement* root) {
  const XMLElement* body = firstChildElementNamed(root, "body");
  return body ? body : findElementDeep(root, "body");
}

const XMLNode* paragraphContainer(const XMLElement* root) {
  const XMLElement* body = bodyOf(root);
  if (!body) return root;
  const XMLElement* div = findElementDeep(body, "div");
  return div ? div : body->FirstChild();
}

WString skeleton() {
  return uR"(<?xml version="1.0" encoding="utf-8" ?>
<tt xmlns="http://www.w3.org/2006/04/ttaf1" xmlns:ttp="http://www.w3.org/2006/04/ttaf1#parameter" xmlns:tts="http://www.w3.org/2006/04/ttaf1#styling">
   <head>
)" + timedTextParameters() +
         uR"(       <styling>
         <style id="defaultSpeaker" tts:fontSize="12px" tts:fontFamily="SansSerif" tts:fontWeight="normal" tts:fontStyle="normal" tts:textDecoration="none" tts:color="white" tts:backgroundColor="black" tts:textAlign="center" />
      </styling>
   </head>
   <body id="thebody" style="defaultCaption">
       <div />
   </body>
</tt>)";
}

}  // namespace

WString timeToClockText(const TimeCode& time) {
  const TimeFields fields = time.Fields();
  WString text;
  appendClock(text, fields, u'.', fields.milliseconds, 3);
  return text;
}

bool TimedText200604::Recognizes(const Lines& lines, const WString&) {
  const WString& text = joinedText(lines);
  const auto has = [&text](WStringView what) { return findText(text, what) != WString::npos; };
  if (has(u"http://www.w3.org/2006/10") || !has(u"http://www.w3.org/") || !has(u"/ttaf1")) return false;
  const XMLElement* root = rootOf(lines);
  const XMLElement* body = findElementDeep(root, "body");
  const XMLNode* container = root;
  if (body) {
    const XMLElement* div = findElementDeep(body, "ttaf1:div");
    container = div ? div : body->FirstChild();
  }
  return firstChildElementNamed(container, nullptr) != nullptr;
}

void TimedText200604::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  const XMLNode* container = paragraphContainer(rootOf(lines));
  for (const XMLNode* child = container ? container->FirstChild() : nullptr; child; child = child->NextSibling()) {
    try {
      if (const XMLElement* p = child->ToElement()) readParagraph(subtitle, *p);
    } catch (const std::exception& exception) {
      std::printf("%s\n", exception.what());
      ++ErrorCount;
    }
  }

  auto& paragraphs = subtitle.Paragraphs;
  if (std::all_of(paragraphs.begin(), paragraphs.end(),
                  [](const auto& p) { return isBelowATenth(p->StartTime) && isBelowATenth(p->EndTime); })) {
    for (auto& paragraph : paragraphs) {
      takeAsHundredths(paragraph->StartTime);
      takeAsHundredths(paragraph->EndTime);
    }
  }
  subtitle.Renumber(1);
}

WString TimedText200604::WriteText(const Subtitle& subtitle, const WString&) {
  TiXMLDocument document(skeleton());
  const XMLElement* target = findElementDeep(findElementDeep(document.RootElement(), "body"), "div");
  const auto newParagraph = [&](size_t i) {
    const Paragraph& paragraph = *subtitle.Paragraphs[i];
    XMLElement* p = document.NewElement("p");
    bool isFirst = true;
    for (const WString& line : split(removeHtmlTags(paragraph.Text), u"\r\n", true)) {
      if (!isFirst) p->InsertNewChildElement("br");
      isFirst = false;
      appendText(*p, line);
    }
    setAttribute(*p, "begin", timeToClockText(paragraph.StartTime));
    setAttribute(*p, "id", u"p" + intToWStr(static_cast<int32_t>(i), u"%d"));
    setAttribute(*p, "end", timeToClockText(paragraph.EndTime));
    return p;
  };
  return documentToText(document, streamOf(document, target, subtitle.Paragraphs.size(), newParagraph));
}

}  // namespace mova
