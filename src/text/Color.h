/// Colours and their text forms.
#pragma once

#include <cstdint>

#include "movautil/WideString.h"

namespace mova {

struct Color {
  uint8_t alpha = 0;
  uint8_t red = 0;
  uint8_t green = 0;
  uint8_t blue = 0;
  bool valid = false;  ///< Whether the text that the colour was read from could be read.

  /// Equal only in all five fields.
  bool operator==(const Color&) const = default;
};

inline constexpr Color colorBlack{255, 0, 0, 0, true};
inline constexpr Color colorGreen{255, 0, 128, 0, true};
inline constexpr Color colorYellow{255, 255, 255, 0, true};
inline constexpr Color colorWhite{255, 255, 255, 255, true};
inline constexpr Color colorBlue{255, 0, 0, 255, true};
inline constexpr Color colorCyan{255, 0, 255, 255, true};
inline constexpr Color colorRed{255, 255, 0, 0, true};
inline constexpr Color colorMagenta{255, 255, 0, 255, true};
inline constexpr Color colorTransparent{15, 255, 255, 255, true};

/// Reads "#rrggbb" in a way of its own, on purpose: the digits count as a decimal number, of which only the top byte is
/// kept, as alpha. So every six-digit colour gives four zero bytes. Not `valid` if no hexadecimal digit comes second;
/// the first unit may be anything.
Color colorFromHtml(WStringView text);

/// Reads a script's colour, "&hbbggrr", "&haabbggrr" (with or without "&") or a decimal number, in lower case. The
/// hexadecimal forms go through colorFromHtml. What is no colour gives `fallback`.
Color ssaColorToColor(WStringView text, const Color& fallback);

/// "&H00" and blue, green and red in hexadecimal, each padded with a blank, not a zero, on purpose.
WString colorToSsaHex(const Color& color);

/// "#RRGGBB".
WString colorToHexString(const Color& color);

}  // namespace mova
