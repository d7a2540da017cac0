/// The styles of Sub Station Alpha scripts, v4 and advanced v4+.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "model/Arithmetic.h"
#include "model/GlobalSettings.h"
#include "movautil/WideString.h"
#include "text/Color.h"

namespace mova {

/// The `SsaFontColor` of the settings, alpha included.
Color ssaFontColor();

struct SsaStyle {
  WString Name;
  WString FontName = GlobalSettings.SsaFontName;
  int32_t FontSize = cutToInt32(GlobalSettings.SsaFontSize);
  bool Italic = false;
  bool Bold = false;
  bool Underline = false;
  Color Primary = ssaFontColor();
  Color Secondary = colorYellow;
  Color Tertiary{0, 0, 0, 0, true};
  Color OutlineColor = colorBlack;
  Color Background = colorBlack;
  int32_t ShadowWidth = GlobalSettings.SsaShadow;
  int32_t OutlineWidth = GlobalSettings.SsaOutline;
  WString Alignment = u"2";
  int32_t MarginLeft = 10;
  int32_t MarginRight = 10;
  int32_t MarginVertical = 10;
  WString BorderStyle = GlobalSettings.SsaOpaqueBox ? u"3" : u"1";
  WString RawLine;                ///< The style line that was read last.
  bool LoadedFromHeader = false;  ///< Whether the search ended at a style line of the header.
};

/// The style line of the settings, in the layout of v4+.
WString defaultSsaStyleLine();

/// The names of all style lines, in order, repeated ones too. An empty header has the name of defaultSsaStyleLine.
std::vector<WString> styleNamesFromHeader(WStringView header);

/// The styles of one header, read once for any number of requests.
///
/// The search is the reverse of what one expects, on purpose: it ends at the first style line that bears another name
/// than the requested one, and gives that other style. The lines up to there have all been read into the same record,
/// so that a field that a line leaves out keeps the value of an earlier line. A search that never ends (no style line,
/// none with another name, an empty request) gives the default style under the requested name.
///
/// So there are two answers at most: the style at the first line with a name, and, for requests of that very name, the
/// style at the first line with another one.
class SsaStyles {
 public:
  explicit SsaStyles(WStringView header);
  SsaStyle Find(WStringView name) const;

 private:
  std::optional<SsaStyle> first_;
  std::optional<SsaStyle> other_;
};

/// The search for a single style.
SsaStyle getSsaStyle(WStringView name, WStringView header);

}  // namespace mova
