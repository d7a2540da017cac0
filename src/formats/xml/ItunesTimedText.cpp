#include "formats/xml/ItunesTimedText.h"

#include <cmath>
#include <set>

#include "formats/xml/TimedTextNodes.h"
#include "formats/xml/TimedTextTime.h"
#include "model/GlobalSettings.h"
#include "text/Strings.h"
#include "xml/TiXMLDocument.h"

namespace mova {
namespace {

/// The mode is always "nonDrop", and the multiplier of 30 that of 24, on purpose.
WString skeleton() {
  WStringView frameRate = u"24";
  WStringView multiplier = u"999 1000";
  if (std::fabs(GlobalSettings.FrameRate - 30) < 0.2) {
    frameRate = u"30";
  } else if (std::fabs(GlobalSettings.FrameRate - 25) < 0.01) {
    frameRate = u"25";
    multiplier = u"1 1";
  }
  WString text =
      uR"(<?xml version="1.0" encoding="utf-8" ?>
<tt xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns="http://www.w3.org/ns/ttml" xmlns:tt="http://www.w3.org/ns/ttml" xmlns:tts="http://www.w3.org/ns/ttml#styling" xmlns:ttp="http://www.w3.org/ns/ttml#parameter" xml:lang="en-US" ttp:timeBase="smpte" ttp:frameRate="[frameRate]" ttp:frameRateMultiplier="[multiplier]" ttp:dropMode="nonDrop">
   <head>
       <styling>
         <style tts:fontSize="100%" tts:color="white" tts:fontStyle="normal" tts:fontWeight="normal" tts:fontFamily="sansSerif" xml:id="normal"/>
         <style tts:fontSize="100%" tts:color="white" tts:fontStyle="normal" tts:fontWeight="bold" tts:fontFamily="sansSerif" xml:id="bold"/>
         <style tts:fontSize="100%" tts:color="white" tts:fontStyle="italic" tts:fontWeight="normal" tts:fontFamily="sansSerif" xml:id="italic"/>
      </styling>
      <layout>
        <region xml:id="top" tts:origin="0% 0%" tts:extent="100% 15%" tts:textAlign="center" tts:displayAlign="before"/>
        <region xml:id="bottom" tts:origin="0% 85%" tts:extent="100% 15%" tts:textAlign="center" tts:displayAlign="after"/>
      </layout>
   </head>
   <body>
       <div />
   </body>
</tt>)";
  replaceAllInPlace(text, u"[frameRate]", frameRate);
  replaceAllInPlace(text, u"[multiplier]", multiplier);
  return text;
}

/// The document of a script's header: a new one without styles.
WString headerForScript(const WString& text) {
  TiXMLDocument document(text);
  XMLElement* head = findElementDeep(document.RootElement(), "head");
  if (XMLNode* styling = findNodeDeep(head, "styling")) styling->DeleteChildren();
  return declarationAndRootXml(document);
}

XMLElement* paragraphContainer(TiXMLDocument& document) {
  XMLElement* root = document.RootElement();
  if (!root) return nullptr;
  if (XMLElement* div = elementAtPath(root, "body/div")) return div;
  if (XMLElement* child = firstChildElementNamed(firstChildElementNamed(root, "body"), nullptr)) return child;
  return findElementDeep(root, "div");
}

WString defaultStyleOf(const TiXMLDocument& document) {
  const XMLElement* body = firstChildElementNamed(document.RootElement(), "body");
  if (!body) body = findElementDeep(document.RootElement(), "body");
  const auto style = body ? attribute(*body, "style") : std::nullopt;
  return style ? *style : newGuid();
}

std::set<WString> regionIds(const TiXMLDocument& document) {
  std::vector<const XMLElement*> regions = elementsAtPath(document.RootElement(), "head/layout/region");
  if (regions.empty()) regions = collectElementsDeep(document.RootElement(), "region");
  std::set<WString> ids;
  for (const XMLElement* region : regions) {
    auto id = attribute(*region, "xml:id");
    if (!id) id = attribute(*region, "id");
    if (id) ids.insert(*id);
  }
  return ids;
}

}  // namespace

bool ItunesTimedText::Recognizes(const Lines& lines, const WString& fileName) {
  const WString extension = Extension();
  if (!fileName.empty() &&
      (fileName.size() < extension.size() ||
       !equalsIgnoreCase(WStringView(fileName).substr(fileName.size() - extension.size()), extension))) {
    return false;
  }
  return TimedText10::Recognizes(lines, fileName);
}

WString ItunesTimedText::WriteText(const Subtitle& subtitle, const WString&) {
  WString header = subtitle.Header;
  bool hasHead = !header.empty() && findElementDeep(TiXMLDocument(header).RootElement(), "head");
  if (!hasHead && isScriptHeader(header)) {
    header = headerForScript(WriteText(Subtitle(), u"tt"));
    hasHead = true;
  }

  TiXMLDocument document(hasHead ? header : skeleton());
  if (hasHead) {
    if (XMLElement* container = paragraphContainer(document)) {
      container->DeleteChildren();
    } else {
      document.Parse(skeleton());
    }
  }
  const WString defaultStyle = defaultStyleOf(document);
  const std::set<WString> regions = regionIds(document);
  const bool hasTop = regions.contains(u"top");
  const bool hasBottom = regions.contains(u"bottom");
  std::set<WString, std::less<>> styleIds;
  for (WString& id : getStyleIdsFromHeader(header)) styleIds.insert(std::move(id));

  const auto newParagraph = [&](size_t i) {
    const Paragraph& paragraph = *subtitle.Paragraphs[i];
    XMLElement* p = document.NewElement("p");
    WStringView text = paragraph.Text;
    const bool isTop = text.starts_with(u"{\\an7}") || text.starts_with(u"{\\an8}") || text.starts_with(u"{\\an9}");
    if (isTop ? hasTop : hasBottom) setAttribute(*p, "region", isTop ? u"top" : u"bottom");
    if (text.starts_with(u"{\\an") && text.size() > 6 && text[5] == u'}') text.remove_prefix(6);
    // A style that the header knows is left out where it is the default anyway; an unknown one is written as it is.
    const WStringView style = paragraph.Style;
    const bool isKnown = !header.empty() && styleIds.contains(style);
    if (!style.empty() && !(isKnown && style == defaultStyle)) setAttribute(*p, "style", style);
    appendTextLines(*p, text, true);
    setAttribute(*p, "begin", formatTimeExpression(paragraph.StartTime));
    setAttribute(*p, "end", formatTimeExpression(paragraph.EndTime));
    return p;
  };

  DocumentStream stream = streamOf(document, paragraphContainer(document), subtitle.Paragraphs.size(), newParagraph);
  stream.rewrite = [](WString& text) {
    dropNamespaceLeftovers(text);
    replaceAllInPlace(text, u"<br />", u"<br/>");
  };
  return documentToText(document, stream);
}

}  // namespace mova
