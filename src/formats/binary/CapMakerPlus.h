/// CapMaker Plus: the binary files of a caption authoring system. Can be read only.
///
/// From offset 128 on the file is searched for marks, bytes 0x0B. 11 bytes from a mark are its time code, byte 22 is 3
/// where the caption is italic, the text begins at byte 25 and ends with a zero byte. Offset 1354 of the file holds the
/// time code at which the programme starts.
#pragma once

#include <span>

#include "formats/SubtitleFormat.h"
#include "formats/binary/BinaryFile.h"

namespace mova {

class CapMakerPlus : public SubtitleFormat {
 public:
  WString Extension() const override { return u".cap"; }
  WString Name() const override { return u"CapMaker Plus"; }

  /// A file named .cap of 640 to 1023999 bytes whose first byte is "+".
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  WString WriteText(const Subtitle&, const WString&) override { return WString(notSupportedText); }
  /// Reads the named file; the lines are not looked at. The time code at a mark begins with the mark itself and so is
  /// none, on purpose: a file is recognised, and yields no captions.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

 private:
  BinaryFile _file;
};

/// Reads the captions of a whole file's bytes.
void readCapMakerCaptions(Subtitle& subtitle, std::span<const unsigned char> bytes);

/// The caption at a mark, whose time code is `time` ("HH:MM:SS:FF"), without its end.
Paragraph readCapMakerCaption(std::span<const unsigned char> bytes, size_t mark, WStringView time);

/// What is done when all marks have been seen: ends, empty captions, captions that start together, numbers.
void finishCapMakerCaptions(Subtitle& subtitle);

}  // namespace mova
