#include "formats/xml/FinalCutProXXml.h"

#include "formats/xml/FinalCutProX.h"
#include "text/Strings.h"

namespace mova {

bool FinalCutProXXml::Recognizes(const Lines& lines, const WString& fileName) {
  return LoadsAny(lines, fileName);
}

WString FinalCutProXXml::WriteText(const Subtitle& subtitle, const WString& title) {
  TiXMLDocument document(finalCutProject(u"1.1", u""));
  const XMLElement* spine = elementAtPath(document.RootElement(), "project/sequence/spine");
  const TiXMLDocument titleDocument(finalCutTitle(u"r6"));
  return projectText(document, spine, subtitle, [&](const Paragraph& paragraph) {
    const double start = paragraph.StartTime.TotalMilliseconds;
    const WString duration = ticks(paragraph.EndTime.TotalMilliseconds - start, 2400000);
    XMLElement* clip = document.NewElement("clip");
    setAttribute(*clip, "name", title);
    setAttribute(*clip, "duration", duration);
    setAttribute(*clip, "start", ticks(start, 2400000));
    clip->SetAttribute("audioStart", "0s");
    setAttribute(*clip, "audioDuration", duration);
    clip->SetAttribute("tcFormat", "NDF");
    XMLNode* clipTitle = clip->InsertEndChild(titleDocument.RootElement()->DeepClone(&document));
    fillTitle(*clipTitle->ToElement(), paragraph);
    return clip;
  });
}

void FinalCutProXXml::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  const TiXMLDocument* document = parsedXml(lines);
  const XMLElement* root = document ? document->RootElement() : nullptr;
  std::vector<const XMLElement*> clips = elementsAtPath(root, "fcpxml/project/sequence/spine/clip");
  if (clips.empty()) clips = collectElementsDeep(root, "clip");
  for (const XMLElement* clip : clips) {
    for (const XMLElement* title : collectElementsDeep(clip, "title")) {
      const XMLElement* text = title->FirstChildElement("text");
      if (!text || attribute(*title, "role") != u"Subtitles") continue;
      const double start = timeFromRational(attributeOrEmpty(*title, "offset"));
      const double duration = timeFromRational(attributeOrEmpty(*title, "duration"));
      subtitle.Append(Paragraph(trim(elementInnerText(*text)), start, start + duration));
    }
  }
}

}  // namespace mova
