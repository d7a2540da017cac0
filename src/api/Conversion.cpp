#include "api/Conversion.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <utility>

#include "api/Output.h"
#include "formats/FormatList.h"
#include "formats/xml/TimedTextTime.h"
#include "model/GlobalSettings.h"
#include "model/Subtitle.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

WString withoutBlanks(WStringView name) {
  return replaceAll(name, u" ", u"");
}

/// The text of the target, and the path with the target's extension in it.
WString convertToFormat(WStringView formatName, WString& outputPath, Subtitle& subtitle, double frameRate) {
  const WString wanted = withoutBlanks(formatName);
  FormatList list;
  buildFormatList(list);
  WString text;
  for (auto& format : list) {
    if (!format->IsTextBased() || !equalsIgnoreCase(wanted, withoutBlanks(format->Name()))) continue;
    WString extension = format->Extension();
    if (!extension.starts_with(u'.')) extension.insert(0, 1, u'.');
    outputPath = changeExtension(outputPath, extension);
    if (!format->IsTimeBased() && !subtitle.WasLoadedWithFrameNumbers) {
      subtitle.CalculateFrameNumbers(frameRate);
    } else if (subtitle.WasLoadedWithFrameNumbers) {
      subtitle.CalculateFrameNumbersChecked(frameRate);
    }
    WString more = subtitle.ToText(*format);
    if (text.empty()) {
      text = std::move(more);
    } else {
      text += more;
    }
  }
  return text;
}

/// Failures are not looked at: the caller of the library learns of them on the disk only.
void writeFile(const WString& path, WStringView text) {
  const int file = open(wideToString(cText(path)).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (file < 0) return;
  writeUtf8(file, text);
  close(file);
}

}  // namespace

Conversion convertFile(const WString& inputPath, const WString& formatName, const WString& outputPath,
                       const MOVASettings* settings) {
  // The rate for formats that count frames; the settings' rate is another matter.
  constexpr double conversionFrameRate = 29.97;

  GlobalSettings = settings ? *settings : getDefaultSettings();
  Conversion conversion;
  conversion.outputPath = outputPath;
  Subtitle subtitle;
  const auto format = subtitle.LoadSubtitle(inputPath);
  if (!format) return conversion;

  conversion.recognizedFormat = format->Name();
  conversion.captions = subtitle.Paragraphs.size();
  conversion.text = convertToFormat(formatName, conversion.outputPath, subtitle, conversionFrameRate);
  conversion.code = conversion.text.empty() ? 1 : 0;
  conversion.text.resize(cText(conversion.text).size());  // Written as a C string: a zero unit ends it.
  return conversion;
}

void forgetConversions() {
  // `GlobalSettings` are set anew by each conversion.
  timedTextTimeFormat = kFirstTimedTextTimeFormat;
  std::srand(1);  // where rand() begins in a process
}

}  // namespace mova

// Texts by value are part of the binary interface. NOLINTNEXTLINE(performance-unnecessary-value-param)
uint32_t movaConvertCC(MOVAString inputPath, MOVAString formatName, MOVAString outputPath,
                       const MOVASettings* settings) {
  const mova::Conversion conversion = mova::convertFile(inputPath, formatName, outputPath, settings);
  if (conversion.code != 2) mova::writeFile(conversion.outputPath, conversion.text);
  return conversion.code;
}
