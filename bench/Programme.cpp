#include "Programme.h"

#include <algorithm>
#include <stdexcept>

#include "formats/FormatList.h"
#include "formats/binary/BinaryFile.h"
#include "formats/binary/Ebu.h"
#include "model/GlobalSettings.h"
#include "movautil/MovaUtil.h"

namespace mova {
namespace {

using namespace std::string_literals;

constexpr size_t largestBinaryFile = binaryFileLimit - 1;
constexpr int mostEbuCaptions = (largestBinaryFile - gsiSize) / ttiSize;

/// A file of marks without captions, which is all that is ever found in one.
std::string makeCapMakerFile() {
  std::string file(largestBinaryFile, '\0');
  file.front() = '+';
  for (size_t mark = 128; mark < file.size(); mark += 64) file[mark] = '\x0B';
  return file;
}

std::string makeCheetahFile(int captions) {
  const std::string record = "\x2E\0\0\0\1\0\0\0\3\0"s + std::string(9, '\0') + "The tide had turned before\0"s;
  std::string file = "\xEA\x22\x03"s + std::string(125, '\0');
  for (int i = 0; i < captions && file.size() + 2 * record.size() < largestBinaryFile; ++i) file += record;
  return file + std::string(20, '\0');
}

}  // namespace

Subtitle makeProgramme(int captions) {
  constexpr WStringView first[] = {u"The tide had turned before", u"Nobody in the caf\u00E9 looked up",
                                   u"We were told to wait here", u"Did you hear the bell again?"};
  constexpr WStringView second[] = {u"the captain came on deck.", u"when the train went by.",
                                    u"until the lamps were lit.", u"No, it was only the wind."};
  Subtitle programme;
  for (int i = 0; i < captions; ++i) {
    WString text(first[i % 4]);
    if (i % 7 == 0) text = u"<i>" + text + u"</i>";
    text += u"\r\n";
    text += second[i / 3 % 4];
    programme.Append({text, 1000.0 + 2500.0 * i, 3000.0 + 2500.0 * i}).Number = i + 1;
  }
  return programme;
}

std::unique_ptr<SubtitleFormat> formatNamed(WStringView name) {
  FormatList list;
  buildFormatList(list);
  for (auto& format : list) {
    if (format->Name() == name) return std::move(format);
  }
  throw std::invalid_argument("no such format");
}

std::string makeFile(WStringView format, int captions) {
  GlobalSettings = getDefaultSettings();
  if (format == u"CapMaker Plus") return makeCapMakerFile();
  if (format == u"Cheetah Caption") return makeCheetahFile(captions);
  if (format == u"EBU STL") {
    const Subtitle programme = makeProgramme(std::min(captions, mostEbuCaptions));
    const WString units = formatNamed(format)->WriteText(programme, u"programme");
    return {units.begin(), units.end()};  // each unit is a byte
  }
  return "\xEF\xBB\xBF" + wideToString(formatNamed(format)->WriteText(makeProgramme(captions), u"programme"));
}

}  // namespace mova
