/// Digital cinema subtitle reels, edition of 2010 (SMPTE 428-7).
#pragma once

#include "formats/xml/DCinemaSmpte.h"

namespace mova {

class DCinemaSmpte2010 : public DCinemaSmpte {
 public:
  DCinemaSmpte2010() : DCinemaSmpte(u"2010", u"2007") {}

  WString Name() const override { return u"D-Cine SMPTE 2010"; }

 protected:
  bool IsRateNumber(WStringView text) const override;
  const XMLElement* FindProperty(const XMLElement* root, const char* name) const override;
  const XMLElement* FindFont(const XMLElement* root) const override;
  std::vector<const XMLElement*> FindSubtitles(const XMLElement* root) const override;
  void PutMarkup(XMLElement& text, WStringView markup) const override;
};

}  // namespace mova
