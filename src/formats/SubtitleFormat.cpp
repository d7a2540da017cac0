#include "formats/SubtitleFormat.h"

namespace mova {

bool SubtitleFormat::LoadsMoreThanErrors(const Lines& lines, const WString& fileName) {
  auto trial = std::make_unique<Subtitle>();
  LoadSubtitle(*trial, lines, fileName);
  return KeepsTrialWithMoreThan(static_cast<uint32_t>(ErrorCount), std::move(trial));  // The comparison is unsigned.
}

bool SubtitleFormat::LoadsAny(const Lines& lines, const WString& fileName) {
  auto trial = std::make_unique<Subtitle>();
  LoadSubtitle(*trial, lines, fileName);
  return KeepsTrialWithMoreThan(0, std::move(trial));
}

bool SubtitleFormat::KeepsTrialWithMoreThan(size_t count, std::unique_ptr<Subtitle> trial) {
  if (trial->Paragraphs.size() <= count) return false;
  if (LoadDependsOnLinesOnly()) trial_ = std::move(trial);
  return true;
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
