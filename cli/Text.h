/// Texts between the user, who writes UTF-8, and the library, which takes UTF-16.
#pragma once

#include <charconv>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mova/mova.h"

namespace mova::cli {

/// Nothing if the text is not valid UTF-8.
std::optional<MOVAString> toUtf16(std::string_view text);
/// Lone surrogates become U+FFFD.
std::string toUtf8(std::u16string_view text);

/// ASCII letters in lower case, blanks removed: two names are the same if their folded forms are.
std::string foldName(std::string_view name);

/// The few names that someone who typed `wanted` may have meant, the likeliest first.
std::vector<std::string> nearestNames(std::string_view wanted, const std::vector<std::string>& names);

/// A name for a message: control characters, which could break the line or the terminal, become "?".
std::string printable(std::string_view text);

/// The whole text as a number; nothing if it is none or beyond the type.
template <class Number, class... Base>
std::optional<Number> parseNumber(std::string_view text, Base... base) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base...);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/// An input as messages call it.
std::string shownInput(std::string_view input);

/// Writes a line, at once if it goes to standard output. A failure stays in the stream's error flag; nothing is thrown.
void printLine(std::FILE* stream, const std::string& line);
/// The errno of the first line for standard output that could not be written; 0 if there is none.
int standardOutputError();
/// Tells the user something that went wrong, on standard error.
void printMessage(const std::string& message);

}  // namespace mova::cli
