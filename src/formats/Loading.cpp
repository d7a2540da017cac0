/// A subtitle's way from its file and to the text of a target: the two operations of Subtitle that know formats.
#include "formats/FormatList.h"
#include "model/GlobalSettings.h"
#include "model/Subtitle.h"
#include "text/Strings.h"

namespace mova {

std::unique_ptr<SubtitleFormat> Subtitle::LoadSubtitle(const WString& path) {
  FileName = path;
  Paragraphs.clear();
  // A file that can't be opened is not the end: formats that read files themselves are asked all the same.
  const Lines lines = readLines(path, GlobalSettings.CodePage);

  FormatList list;
  buildFormatList(list);
  for (auto& format : list) {
    if (!format->Recognizes(lines, path)) continue;
    Header.clear();
    format->LoadFlag = false;
    format->LoadSubtitle(*this, lines, path);
    LoadedFormat = format.get();
    WasLoadedWithFrameNumbers = !format->IsTimeBased();
    return std::move(format);
  }
  return nullptr;
}

WString Subtitle::ToText(SubtitleFormat& format) const {
  return format.WriteText(*this, fileBaseName(FileName));
}

}  // namespace mova
