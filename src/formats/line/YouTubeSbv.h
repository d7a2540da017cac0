/// YouTube's exchange format: blocks of a line with two times, text lines and a blank line.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class YouTubeSbv : public SubtitleFormat {
 public:
  WString Extension() const override { return u".sbv"; }
  WString Name() const override { return u"YouTube sbv"; }

  /// The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Every line that stands where times are expected and holds none is an error, a blank one too, on purpose.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

 private:
  enum Expecting { ExpectingTimeCodes, ExpectingText };

  void ReadLine(Subtitle& subtitle, WStringView line, WStringView next);
  void ReadTimeCodes(WStringView line);
  void ReadText(Subtitle& subtitle, WStringView line, WStringView next);

  std::unique_ptr<Paragraph> _paragraph;  ///< The block being read.
  Expecting _expecting = ExpectingTimeCodes;
};

}  // namespace mova
