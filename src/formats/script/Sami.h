/// SAMI: a head with a style sheet, and a body of points in time ("syncs"), each with the text that is shown from it
/// on.
#pragma once

#include "formats/SubtitleFormat.h"

namespace mova {

class Sami : public SubtitleFormat {
 public:
  WString Extension() const override { return u".smi"; }
  WString Name() const override { return u"SAMI"; }
  bool SupportsStyles() const override { return true; }

  /// Refuses a file that closes its sync tags, which is left to SamiModern; else the usual trial.
  bool Recognizes(const Lines& lines, const WString& fileName) override;
  /// A style section in the subtitle's header is kept, and with it the classes of the paragraphs. The language written
  /// is English, whatever the text.
  WString WriteText(const Subtitle& subtitle, const WString& title) override;
  /// Reads both forms. Missing tags are forgiven, and nothing counts as an error.
  void LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString& fileName) override;

 protected:
  /// How the tags of the body are written.
  struct Form {
    WStringView quote;      ///< Around the values of attributes.
    WStringView close;      ///< Behind the text of a sync.
    WStringView lineBreak;  ///< In the place of CR LF.
    bool breaksAtLineFeed;  ///< Whether a line feed alone is a line break too.
  };
  static WString Write(const Subtitle& subtitle, WStringView title, const Form& form);

 private:
  bool LoadDependsOnLinesOnly() const override { return true; }

  static void AppendSync(WString& out, double time, WStringView className, WStringView text, const Form& form);
};

}  // namespace mova
