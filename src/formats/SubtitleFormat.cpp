#include "formats/SubtitleFormat.h"

namespace mova {

bool SubtitleFormat::LoadsMoreThanErrors(const Lines& lines, const WString& fileName) {
  Subtitle trial;
  LoadSubtitle(trial, lines, fileName);
  return trial.Paragraphs.size() > static_cast<uint32_t>(ErrorCount);
}

bool SubtitleFormat::Recognizes(const Lines& lines, const WString& fileName) {
  return LoadsMoreThanErrors(lines, fileName);
}

}  // namespace mova
