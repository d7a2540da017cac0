#include "Programme.h"

#include <stdexcept>

#include "formats/FormatList.h"
#include "model/GlobalSettings.h"
#include "movautil/MovaUtil.h"

namespace mova {

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
  return wideToString(formatNamed(format)->WriteText(makeProgramme(captions), u"programme"));
}

}  // namespace mova
