#include "formats/xml/DCinemaSmpte2010.h"

#include "text/Strings.h"

namespace mova {

bool DCinemaSmpte2010::IsRateNumber(WStringView text) const {
  return isAllDigits(text);
}

const XMLElement* DCinemaSmpte2010::FindProperty(const XMLElement* root, const char* name) const {
  return findElementDeep(root, name);
}

const XMLElement* DCinemaSmpte2010::FindFont(const XMLElement* root) const {
  const XMLElement* font = elementAtPath(root, "SubtitleList/Font");
  return font ? font : findElementDeep(root, "Font");
}

std::vector<const XMLElement*> DCinemaSmpte2010::FindSubtitles(const XMLElement* root) const {
  std::vector<const XMLElement*> subtitles = elementsAtPath(root, "SubtitleList/Subtitle");
  return subtitles.empty() ? collectElementsDeep(root, "Subtitle") : subtitles;
}

/// An element at the start becomes a real child, and what stands around it is lost, on purpose.
void DCinemaSmpte2010::PutMarkup(XMLElement& text, WStringView markup) const {
  appendXmlFragment(text, markup);
}

}  // namespace mova
