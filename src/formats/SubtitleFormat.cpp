#include "formats/SubtitleFormat.h"

namespace mova {

bool SubtitleFormat::LoadsMoreThanErrors(const Lines& lines, const WString& fileName) {
  auto trial = std::make_unique<Subtitle>();
  LoadSubtitle(*trial, lines, fileName);
  // The comparison is unsigned.
  const bool accepted = trial->Paragraphs.size() > static_cast<uint32_t>(ErrorCount);
  if (accepted && LoadDependsOnLinesOnly()) trial_ = std::move(trial);
  return accepted;
}

bool SubtitleFormat::TakeTrial(Subtitle& subtitle) {
  if (!trial_) return false;
  subtitle.Header = std::move(trial_->Header);
  subtitle.Footer = std::move(trial_->Footer);
  subtitle.Paragraphs = std::move(trial_->Paragraphs);
  trial_.reset();
  return true;
}

bool SubtitleFormat::Recognizes(const Lines& lines, const WString& fileName) {
  return LoadsMoreThanErrors(lines, fileName);
}

}  // namespace mova
