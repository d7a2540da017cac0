/// SubRip: numbered blocks of a number line, a time line, text lines and a blank line.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class SubRip : public SubtitleFormat {
 public:
  WString Extension() const override { return u".srt"; }
  WString Name() const override { return u"SubRip"; }
  std::vector<WString> ExtraExtensions() const override { return {u".wsrt"}; }

  /// Refuses what starts as WebVTT does, else the usual trial.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// The title is not used.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Forgives damaged files: missing or repeated numbers, blank lines within a text, odd arrows and separators, a last
  /// block without a blank line behind it.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

 private:
  /// What `_lastParagraph` keeps of a trial changes the count of errors only, and the text of a block that is gone.
  bool LoadDependsOnLinesOnly() const override { return true; }

  enum Expecting { ExpectingNumber, ExpectingTimeCodes, ExpectingText };

  void ReadLine(Subtitle& subtitle, WStringView line, WStringView next, WStringView nextNext);
  void ReadNumber(WStringView line, WStringView nextNext);
  void ReadTimeCodes(WStringView line);
  void ReadTextLine(WStringView line);
  void ReadBlankLineOfText(Subtitle& subtitle, WStringView line, WStringView next);

  Expecting _expecting = ExpectingNumber;
  bool _hasBlankLines = false;            ///< Whether any text may hold two line ends in a row.
  bool _hasZeros = false;                 ///< Whether any line holds a zero unit.
  std::unique_ptr<Paragraph> _paragraph;  ///< The block being read.
  /// The block that was read last, or null. It is not reset at the start of a load: the load that follows a trial
  /// begins with the trial's last block here, on purpose, so that a stray line at the top is no error then.
  Paragraph* _lastParagraph = nullptr;
  Paragraph _lastOfEarlierLoad;  ///< What `_lastParagraph` is between two loads, when the subtitle may be gone.
};

}  // namespace mova
