/// What every format implements.
#pragma once

#include <cstdint>
#include <vector>

#include "model/Lines.h"
#include "model/Subtitle.h"
#include "movautil/WideString.h"

namespace mova {

class SubtitleFormat {
 public:
  /// With the leading dot.
  virtual WString Extension() const = 0;
  /// The display name, and the key by which a target is looked up.
  virtual WString Name() const = 0;
  virtual bool IsTimeBased() const { return true; }

  /// Whether the file is in this format. By default a trial: the lines are loaded into a throw-away subtitle, and the
  /// file is accepted if that gives more paragraphs than errors.
  virtual bool Recognizes(const Lines& lines, const WString& fileName);

  /// The whole text of a file. `title` is the base name of the input.
  virtual WString WriteText(const Subtitle& subtitle, const WString& title) = 0;

  /// Fills the subtitle. Lines or blocks that can't be used are skipped and counted in `ErrorCount`. Most formats look
  /// at the lines only; those that are read by their bytes open the named file themselves.
  virtual void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) = 0;

  /// Part of the interface; the way of a conversion doesn't call these three.
  virtual void StripNativeFormatting(Subtitle&, SubtitleFormat&) {}
  virtual std::vector<WString> ExtraExtensions() const { return {}; }
  virtual bool SupportsStyles() const { return false; }

  virtual bool IsTextBased() const { return true; }

  /// Moves what the trial of Recognizes loaded into the subtitle, where loading it again would give the same. Answers
  /// false, and does nothing, where it has to be loaded.
  bool TakeTrial(Subtitle& subtitle);

  virtual ~SubtitleFormat() = default;

  bool LoadFlag = false;  ///< Cleared on the chosen format before it loads; read by nothing.
  /// Lines or blocks that the last load could not use. Compared with the number of paragraphs as an unsigned value.
  int32_t ErrorCount = 0;

 protected:
  /// The trial of the default Recognizes, for formats that take a first look at the lines.
  bool LoadsMoreThanErrors(const Lines& lines, const WString& fileName);

  /// The trial of formats that accept a file if it gives any paragraph, however many errors there are.
  bool LoadsAny(const Lines& lines, const WString& fileName);

  /// Whether LoadSubtitle depends on nothing but the lines: not on what an earlier load left in this instance or in
  /// process-wide state, nor on the subtitle's `FileName`. The winner's trial then counts as its load.
  virtual bool LoadDependsOnLinesOnly() const { return false; }

 private:
  bool KeepsTrialWithMoreThan(size_t count, std::unique_ptr<Subtitle> trial);

  std::unique_ptr<Subtitle> trial_;
};

}  // namespace mova
