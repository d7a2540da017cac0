/// Cheetah Caption: the binary files of a caption authoring system. Can be read only.
///
/// A header of 128 bytes is followed by records: length (1 byte, itself included), 1 byte, start and end time (4 bytes
/// each: hours, minutes, seconds, frames), 5 bytes, and the text from offset 19 on, or up to 4 bytes earlier.
#pragma once

#include <span>

#include "formats/SubtitleFormat.h"
#include "formats/binary/BinaryFile.h"

namespace mova {

class CheetahCaption : public SubtitleFormat {
 public:
  WString Extension() const override { return u".cap"; }
  WString Name() const override { return u"Cheetah Caption"; }

  /// A file named .cap of 200 to 1023999 bytes with the signature EA 22, then a byte below 4, anywhere but in the last
  /// 20 bytes.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  WString WriteText(const Subtitle&, const WString&) override { return WString(notSupportedText); }
  /// Reads the named file; the lines are not looked at.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

 private:
  BinaryFile _file;
};

/// Reads the captions of a whole file's bytes.
void readCheetahCaptions(Subtitle& subtitle, std::span<const unsigned char> bytes);

}  // namespace mova
