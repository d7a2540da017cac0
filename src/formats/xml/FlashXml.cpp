#include "formats/xml/FlashXml.h"

#include <optional>

#include "formats/FrameTime.h"
#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Markup.h"
#include "text/Strings.h"
#include "xml/TiXMLDocument.h"

namespace mova {
namespace {

constexpr WStringView skeleton =
    uR"(<?xml version="1.0" encoding="utf-8" ?>
<tt>
   <div>
   </div>
</tt>)";

/// The text of a "p" as it is stored: the printed text has its tags as real ones, which makes a CDATA section of it.
WString cdataText(WStringView text) {
  WString lines = removeHtmlTags(cText(text));
  replaceAllInPlace(lines, u"\r\n", u"<br />");
  replaceAllInPlace(lines, u"\n", u"<br />");
  return u"<![CDATA[<sub>" + lines + u"</sub>]]>";
}

WString textOf(const XMLElement& p) {
  WString text;
  for (const XMLNode* child = p.FirstChild(); child; child = child->NextSibling()) {
    if (child->ToText()) {
      text += trim(valueOf(*child));
    } else if (isNamed(child, "br")) {
      text += u"\r\n";
    } else if (child->ToElement()) {
      text += trim(elementInnerText(*child->ToElement()));
    }
  }
  replaceAllInPlace(text, u"<br />", u"\r\n");
  replaceAllInPlace(text, u"</sub>", u"");
  replaceAllInPlace(text, u"<sub>", u"");
  return text;
}

/// Milliseconds of "3.5s" or of a clock time, whose last piece is milliseconds as it stands: "00:00:01.50" is 1050.
/// Nothing if the clock time has fewer than four pieces.
std::optional<double> clockOrSeconds(WStringView value) {
  if (value.ends_with(u's')) return wideToDouble(trimEndView(value, u's')) * 1000.0;
  const std::vector<WStringView> pieces = splitViews(value, u":.,", false);
  if (pieces.size() < 4) return std::nullopt;
  return partsToMilliseconds(wideToInt(pieces[0]), wideToInt(pieces[1]), wideToInt(pieces[2]), wideToInt(pieces[3]));
}

/// The paragraph of a "p", or nothing if a time can't be read.
std::optional<Paragraph> paragraphOf(const XMLElement& p) {
  const std::optional<double> start = clockOrSeconds(attributeOrEmpty(p, "begin"));
  if (!start) return std::nullopt;
  const WString end = attributeOrEmpty(p, "end");
  const std::optional<double> endOrDuration = clockOrSeconds(end.empty() ? attributeOrEmpty(p, "dur") : end);
  if (!endOrDuration) return std::nullopt;
  return Paragraph(textOf(p), *start, end.empty() ? *start + *endOrDuration : *endOrDuration);
}

}  // namespace

WString flashClock(TimeCode timeCode) {
  const TimeFields fields = timeCode.Fields();
  WString text;
  appendClock(text, fields, u'.', fields.milliseconds);
  return text;
}

bool FlashXml::Recognizes(const Lines& lines, const WString&) {
  const TiXMLDocument* document = parsedXml(lines);
  if (!document || !isNamed(document->RootElement(), "tt")) return false;
  const WString& text = joinedText(lines);
  if (findText(text, u"<tt>") == WString::npos && findText(text, u"<tt ") == WString::npos) return false;
  if (findText(text, u"<sub>") == WString::npos) return false;
  const XMLElement* root = document->RootElement();
  return !elementsAtPath(root, "div/p").empty() || !elementsAtPath(root, "p").empty();
}

WString FlashXml::WriteText(const Subtitle& subtitle, const WString&) {
  TiXMLDocument document(skeleton);
  const XMLElement* div = findElementDeep(document.RootElement(), "div");
  const auto newP = [&](size_t i) {
    const Paragraph& paragraph = *subtitle.Paragraphs[i];
    XMLElement* p = document.NewElement("p");
    setText(*p, cdataText(paragraph.Text));
    setAttribute(*p, "begin", flashClock(paragraph.StartTime));
    setAttribute(*p, "end", flashClock(paragraph.EndTime));
    return p;
  };
  return documentToText(document, streamOf(document, div, subtitle.Paragraphs.size(), newP));
}

void FlashXml::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  const TiXMLDocument* document = parsedXml(lines);
  if (!document) return;
  const XMLElement* root = document->RootElement();
  std::vector<const XMLElement*> elements = elementsAtPath(root, "div/p");
  if (elements.empty()) elements = collectElementsDeep(root, "p");
  for (const XMLElement* p : elements) {
    if (std::optional<Paragraph> paragraph = paragraphOf(*p)) {
      subtitle.Append(std::move(*paragraph));
    } else {
      ++ErrorCount;
    }
  }
  subtitle.Renumber(1);
}

}  // namespace mova
