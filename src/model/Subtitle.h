/// The captions of one file: what every format reads into and writes from.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/Paragraph.h"

namespace mova {

class SubtitleFormat;

class Subtitle {
 public:
  /// Reads the file and fills this subtitle through the first format of the list that recognises it. The result is that
  /// format, which the caller keeps for as long as it uses `LoadedFormat`, or null; then there are no paragraphs.
  /// (Defined in the formats' room, where the list is, as are the two others that ask a format.)
  std::unique_ptr<SubtitleFormat> LoadSubtitle(const WString& path);

  /// The text of a file in that format; the title is the base name of `FileName`.
  WString ToText(SubtitleFormat& format) const;

  void CalculateFrameNumbers(double frameRate);
  /// Does nothing and answers false unless a time-based format loaded the subtitle.
  bool CalculateFrameNumbersChecked(double frameRate);

  /// Gives `Number` the values first, first + 1, and so on.
  void Renumber(int32_t first);

  /// Removes the paragraphs whose trimmed text is empty and renumbers from the first one's number. The first paragraph
  /// is never removed, even if it is empty, on purpose. Answers how many were removed.
  int32_t RemoveEmptyLines();

  /// Has no visible effect: the amount goes to copies of the paragraphs that are given up at once. Its caller counts on
  /// times that stay as they are.
  void AddTimeToAllParagraphs(double milliseconds) const;

  /// Appends a paragraph and gives it back for filling in. It stays where it is for as long as the subtitle lives.
  Paragraph& Append(Paragraph paragraph);

  WString Header;  ///< What a format keeps from the top of its file (script header, XML).
  WString Footer;  ///< The same for the end of the file.
  WString FileName = u"Untitled";
  std::vector<std::unique_ptr<Paragraph>> Paragraphs;
  SubtitleFormat* LoadedFormat = nullptr;  ///< Not owned.
  bool WasLoadedWithFrameNumbers = false;
};

}  // namespace mova
