/// Digital cinema subtitle reels, edition of 2007 (SMPTE 428-7).
#pragma once

#include "formats/xml/DCinemaSmpte.h"

namespace mova {

class DCinemaSmpte2007 : public DCinemaSmpte {
 public:
  DCinemaSmpte2007() : DCinemaSmpte(u"2007", u"2010") {}

  WString Name() const override { return u"D-Cine SMPTE 2007"; }

 protected:
  bool IsRateNumber(WStringView text) const override;
  const XMLElement* FindProperty(const XMLElement* root, const char* name) const override;
  const XMLElement* FindFont(const XMLElement* root) const override;
  std::vector<const XMLElement*> FindSubtitles(const XMLElement* root) const override;
  void PutMarkup(XMLElement& text, WStringView markup) const override;
};

}  // namespace mova
