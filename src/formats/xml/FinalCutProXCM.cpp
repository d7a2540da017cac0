#include "formats/xml/FinalCutProXCM.h"

#include "formats/xml/FinalCutProX.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr WStringView spineTemplate =
    uR"(        <clip offset="0s" name="Untitled" duration="147005859/24000s" tcFormat="NDF">
          <video offset="0s" ref="r6" duration="147005859/24000s">
            <audio lane="-1" offset="0s" ref="r6" duration="147005000/24000s" role="dialog"/>
          </video>
        </clip>)";

/// Stands for a line break in a marker's value. It is a letter too ("â"), which is read as a line break all the same.
constexpr WStringView lineBreakLetter = u"\u00E2";

}  // namespace

bool FinalCutProXCM::Recognizes(const Lines& lines, const WString& fileName) {
  return LoadsAny(lines, fileName);
}

WString FinalCutProXCM::WriteText(const Subtitle& subtitle, const WString&) {
  TiXMLDocument document(finalCutProject(u"1.1", spineTemplate));
  const XMLElement* clip = elementAtPath(document.RootElement(), "project/sequence/spine/clip");
  return projectText(document, clip, subtitle, [&](const Paragraph& paragraph) {
    const double start = paragraph.StartTime.TotalMilliseconds;
    XMLElement* marker = document.NewElement("chapter-marker");
    setAttribute(*marker, "duration", ticks(paragraph.EndTime.TotalMilliseconds - start, 2400000));
    setAttribute(*marker, "start", ticks(start, 2400000));
    setAttribute(*marker, "value", replaceAll(paragraph.Text, u"\r\n", lineBreakLetter));
    marker->SetAttribute("posterOffset", "11/24s");
    return marker;
  });
}

void FinalCutProXCM::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  const TiXMLDocument* document = parsedXml(lines);
  const XMLElement* root = document ? document->RootElement() : nullptr;
  std::vector<const XMLElement*> markers = elementsAtPath(root, "fcpxml/project/sequence/spine/clip/chapter-marker");
  if (markers.empty()) markers = collectElementsDeep(root, "clip");
  for (const XMLElement* marker : markers) {
    const double start = timeFromRational(attributeOrEmpty(*marker, "start"));
    const double duration = timeFromRational(attributeOrEmpty(*marker, "duration"));
    subtitle.Append(
        Paragraph(replaceAll(attributeOrEmpty(*marker, "value"), lineBreakLetter, u"\r\n"), start, start + duration));
  }
}

}  // namespace mova
