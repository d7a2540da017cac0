#include "formats/xml/FinalCutProXmlGap.h"

#include "formats/xml/FinalCutProX.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr WStringView spineTemplate =
    uR"(        <gap offset="0s" name="Espace" duration="645900/2500s" start="0s"></gap>)";

/// The inner texts of the "text" elements, or nothing if there are none.
std::optional<WString> textOf(const XMLElement& title) {
  const XMLElement* element = title.FirstChildElement("text");
  if (!element) return std::nullopt;
  WString text;
  for (; element; element = element->NextSiblingElement("text")) {
    text += elementInnerText(*element);
    text += u'\n';
  }
  return trim(text);
}

}  // namespace

bool FinalCutProXmlGap::Recognizes(const Lines& lines, const WString& fileName) {
  return LoadsAny(lines, fileName);
}

WString FinalCutProXmlGap::WriteText(const Subtitle& subtitle, const WString&) {
  TiXMLDocument document(finalCutProject(u"1.2", spineTemplate));
  const XMLElement* gap = elementAtPath(document.RootElement(), "project/sequence/spine/gap");
  const TiXMLDocument titleDocument(finalCutTitle(u"r1"));
  return projectText(document, gap, subtitle, [&](const Paragraph& paragraph) {
    XMLElement* title = titleDocument.RootElement()->DeepClone(&document)->ToElement();
    fillTitle(*title, paragraph);
    return title;
  });
}

void FinalCutProXmlGap::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  const TiXMLDocument* document = parsedXml(lines);
  const XMLElement* root = document ? document->RootElement() : nullptr;
  std::vector<const XMLElement*> gaps = elementsAtPath(root, "fcpxml/project/sequence/spine/gap");
  if (gaps.empty()) gaps = collectElementsDeep(root, "gap");
  for (const XMLElement* gap : gaps) {
    for (const XMLElement* title : collectElementsDeep(gap, "title")) {
      std::optional<WString> text = textOf(*title);
      if (!text) continue;
      const double start = timeFromRational(attributeOrEmpty(*title, "offset"));
      const double duration = timeFromRational(attributeOrEmpty(*title, "duration"));
      subtitle.Append(Paragraph(std::move(*text), start, start + duration));
    }
  }
}

}  // namespace mova
