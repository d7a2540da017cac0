/// EBU STL: the subtitling data exchange format of EBU Tech 3264. A General Subtitle Information block (GSI, 1024
/// bytes) is followed by Text and Timing Information blocks (TTI, 128 bytes each).
///
/// Texts of blocks are held as wide strings of one byte for each unit, which is also how WriteText gives the file. (A
/// conversion ends its output at the first zero unit, which is the first byte of the first TTI block.)
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "formats/SubtitleFormat.h"
#include "formats/binary/BinaryFile.h"

namespace mova {

constexpr size_t gsiSize = 1024;     // bytes
constexpr size_t ttiSize = 128;      // bytes
constexpr size_t ttiTextSize = 112;  // bytes

/// The fields of a GSI block, all of them text. A new block holds the defaults of the table in Ebu.cpp.
struct GsiBlock {
  GsiBlock();

  WString CPN;    ///< code page number
  WString DFC;    ///< disk format code
  WString DSC;    ///< display standard code
  WString CCT;    ///< character code table
  WString LC;     ///< language code
  WString OPT;    ///< original programme title
  WString OET;    ///< original episode title
  WString TPT;    ///< translated programme title
  WString TET;    ///< translated episode title
  WString TN;     ///< translator's name
  WString TCD;    ///< translator's contact details
  WString SLR;    ///< subtitle list reference
  WString CD;     ///< creation date
  WString RD;     ///< revision date
  WString RN;     ///< revision number
  WString TNB;    ///< total number of blocks
  WString TNS;    ///< total number of subtitles
  WString TNG;    ///< total number of groups
  WString MNC;    ///< maximum characters per row
  WString MNR;    ///< maximum number of rows
  WString TCS;    ///< time code status
  WString TCP;    ///< time code of the first in-cue of the programme
  WString TCF;    ///< time code of the first in-cue
  WString TND;    ///< total number of disks
  WString DSN;    ///< disk sequence number
  WString CO;     ///< country of origin
  WString PUB;    ///< publisher
  WString EN;     ///< editor's name
  WString ECD;    ///< editor's contact details
  WString Spare;  ///< spare bytes
  WString UDA;    ///< user-defined area
};

/// A time code of a TTI block. In the file the last part is frames.
struct TtiTime {
  int32_t Hours = 0;
  int32_t Minutes = 0;
  int32_t Seconds = 0;
  int32_t Milliseconds = 0;
};

struct TtiBlock {
  uint8_t SGN = 0;    ///< subtitle group number
  uint16_t SN = 0;    ///< subtitle number
  uint8_t EBN = 255;  ///< extension block number; 255 for the last block of a subtitle, 254 for user data
  uint8_t CS = 0;     ///< cumulative status
  TtiTime TCI;        ///< time code in
  TtiTime TCO;        ///< time code out
  uint8_t VP = 22;    ///< vertical position
  uint8_t JC = 2;     ///< justification code
  uint8_t CF = 0;     ///< comment flag
  WString TF;         ///< text field
};

class Ebu : public SubtitleFormat {
 public:
  WString Extension() const override { return u".stl"; }
  WString Name() const override { return u"EBU STL"; }

  /// 1153 to 1023999 bytes with a disk format code of a known rate, and a code page in digits or a name ending in
  /// "stl".
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// One unit for each byte of the file. The header of the file that the subtitle came from is kept where it is usable.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Reads the named file; the lines are not looked at.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

  std::vector<int32_t> VerticalPositions;   ///< VP of every block that was read; read by nobody.
  std::vector<int32_t> JustificationCodes;  ///< JC of every block that was read; read by nobody.
  std::optional<GsiBlock> Header;           ///< The block of the file that was read last.

  /// Fills the paragraphs from a whole file's bytes.
  void ReadFile(Subtitle& subtitle, std::span<const unsigned char> bytes);
  std::vector<TtiBlock> readTtiBlocks(std::span<const unsigned char> bytes, const GsiBlock& header);

 private:
  BinaryFile _file;
};

/// A field ends at a zero byte. Some fields are not read and keep their defaults.
GsiBlock parseGsiBlock(std::span<const unsigned char> bytes);

/// The fields in file order, or, if they don't add up to 1024 units, a message with their length in the block's place:
/// nobody is told otherwise.
WString gsiToText(const GsiBlock& block);

/// Whole frames a second by the disk format code; 29 is 29 and not 29.97.
int32_t frameRateOfGsi(const GsiBlock& block);

/// 128 units.
WString buildTtiBlock(const TtiBlock& block, const GsiBlock& header);

/// The teletext colour, 0 to 7, of a colour's name or six hexadecimal digits.
int32_t ebuColorCode(WStringView name);

}  // namespace mova
