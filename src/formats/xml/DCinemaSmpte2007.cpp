#include "formats/xml/DCinemaSmpte2007.h"

namespace mova {

/// Anything counts as a number here.
bool DCinemaSmpte2007::IsRateNumber(WStringView) const {
  return true;
}

const XMLElement* DCinemaSmpte2007::FindProperty(const XMLElement* root, const char* name) const {
  return firstChildElementNamed(root, name);
}

const XMLElement* DCinemaSmpte2007::FindFont(const XMLElement* root) const {
  const XMLElement* font = firstChildElementNamed(root, "Font");
  return font ? font : elementAtPath(root, "SubtitleList/Font");
}

std::vector<const XMLElement*> DCinemaSmpte2007::FindSubtitles(const XMLElement* root) const {
  return collectElementsDeep(root, "Subtitle");
}

/// The markup stays a text, which the printed document has as real tags.
void DCinemaSmpte2007::PutMarkup(XMLElement& text, WStringView markup) const {
  setText(text, markup);
}

}  // namespace mova
