#include "formats/xml/YouTubeAnnotations.h"

#include <set>

#include "formats/FrameTime.h"
#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"
#include "xml/TiXMLDocument.h"

namespace mova {
namespace {

constexpr WStringView skeleton =
    uR"(<?xml version="1.0" encoding="utf-8"?>
<document>
   <requestheader video_id="X"/>
  <annotations/>
</document>)";

void appendAnchor(XMLElement& region, TimeCode timeCode) {
  XMLElement* anchor = region.InsertNewChildElement("anchoredRegion");
  setAttribute(*anchor, "t", annotationClock(timeCode));
  anchor->SetAttribute("d", "0");
}

std::vector<const XMLElement*> regionsOf(const XMLElement& annotation, const char* path, const char* name) {
  std::vector<const XMLElement*> regions = elementsAtPath(&annotation, path);
  return regions.empty() ? collectElementsDeep(&annotation, name) : regions;
}

/// The elements with the two points in time, or any other number of elements if the annotation has no such two.
std::vector<const XMLElement*> timedRegionsOf(const XMLElement& annotation) {
  auto regions = regionsOf(annotation, "segment/movingRegion/anchoredRegion", "anchoredRegion");
  if (regions.size() != 2) regions = regionsOf(annotation, "segment/movingRegion/rectRegion", "rectRegion");
  return regions;
}

/// "M:S.x" or "H:M:S.x", where "x" is milliseconds as it stands. Anything else is 0.
double annotationTime(WStringView text) {
  const std::vector<WStringView> pieces = splitViews(text, u".:", true);
  if (pieces.size() != 3 && pieces.size() != 4) return 0;
  const auto fromBehind = [&pieces](size_t n) { return n <= pieces.size() ? wideToInt(pieces[pieces.size() - n]) : 0; };
  return partsToMilliseconds(fromBehind(4), fromBehind(3), fromBehind(2), fromBehind(1));
}

bool hasTextAndTimes(const XMLElement& annotation) {
  return findNodeDeep(&annotation, "TEXT") && timedRegionsOf(annotation).size() == 2;
}

}  // namespace

WString annotationClock(TimeCode timeCode) {
  const TimeFields fields = timeCode.Fields();
  WString text;
  appendClock(text, fields, u'.', fields.milliseconds, 1, 1);
  return text;
}

bool YouTubeAnnotations::Recognizes(const Lines& lines, const WString& fileName) {
  CollectStyles = false;
  return LoadsAny(lines, fileName);
}

WString YouTubeAnnotations::WriteText(const Subtitle& subtitle, const WString&) {
  TiXMLDocument document(skeleton);
  const XMLElement* annotations = findElementDeep(document.RootElement(), "annotations");
  const auto newAnnotation = [&](size_t i) {
    const Paragraph& paragraph = *subtitle.Paragraphs[i];
    XMLElement* annotation = document.NewElement("annotation");
    setAttribute(*annotation, "id", u"annotation_" + intToWStr(static_cast<int32_t>(i + 1), u"%d"));
    annotation->SetAttribute("author", "Caption Forge");
    annotation->SetAttribute("type", "text");
    annotation->SetAttribute("style", "speech");
    setText(*annotation->InsertNewChildElement("TEXT"), paragraph.Text);
    XMLElement* region = annotation->InsertNewChildElement("segment")->InsertNewChildElement("movingRegion");
    region->SetAttribute("type", "anchored");
    appendAnchor(*region, paragraph.StartTime);
    appendAnchor(*region, paragraph.EndTime);
    return annotation;
  };
  return documentToText(document, streamOf(document, annotations, subtitle.Paragraphs.size(), newAnnotation));
}

void YouTubeAnnotations::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  const TiXMLDocument* document = parsedXml(lines);
  if (!document) return;
  const WString& text = joinedText(lines);
  if (findText(text, u"</annotations>") == WString::npos || findText(text, u"</TEXT>") == WString::npos) return;

  const auto annotations = collectElementsDeep(document->RootElement(), "annotation");
  std::set<WString> styles = {u"speech"};
  if (CollectStyles) {
    for (const XMLElement* annotation : annotations) {
      const auto style = attribute(*annotation, "style");
      if (style && hasTextAndTimes(*annotation)) styles.insert(*style);
    }
  } else {
    styles.insert({u"popup", u"anchored"});
  }

  for (const XMLElement* annotation : annotations) {
    const auto style = attribute(*annotation, "style");
    if (!style || !styles.contains(*style)) continue;
    const XMLNode* caption = findNodeDeep(annotation, "TEXT");
    const auto regions = timedRegionsOf(*annotation);
    if (!caption || regions.size() != 2) continue;
    subtitle.Append(Paragraph(caption->ToElement() ? elementInnerText(*caption->ToElement()) : WString(),
                              annotationTime(attributeOrEmpty(*regions[0], "t")),
                              annotationTime(attributeOrEmpty(*regions[1], "t"))));
  }
  subtitle.Renumber(1);
}

}  // namespace mova
