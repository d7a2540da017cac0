/// The operations of Subtitle that know formats: its way from a file, and to the text of a target.
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
    if (!format->TakeTrial(*this)) format->LoadSubtitle(*this, lines, path);
    LoadedFormat = format.get();
    WasLoadedWithFrameNumbers = !format->IsTimeBased();
    return std::move(format);
  }
  return nullptr;
}

bool Subtitle::CalculateFrameNumbersChecked(double frameRate) {
  if (!LoadedFormat || !LoadedFormat->IsTimeBased()) return false;
  CalculateFrameNumbers(frameRate);
  return true;
}

WString Subtitle::ToText(SubtitleFormat& format) const {
  return format.WriteText(*this, fileBaseName(FileName));
}

}  // namespace mova
