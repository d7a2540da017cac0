#include "Settings.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "Failure.h"
#include "Text.h"

namespace mova::cli {

namespace {

/// A uint32_t field is a colour: no other field has that type.
using Member = std::variant<bool MOVASettings::*, int32_t MOVASettings::*, uint32_t MOVASettings::*,
                            double MOVASettings::*, MOVAString MOVASettings::*>;

struct Field {
  std::string_view name;
  Member member;
  std::string_view help;  ///< empty for a field that nothing reads
};

// clang-format off
const Field kFields[] = {
    {"Reserved0", &MOVASettings::Reserved0, ""},
    {"FrameRate", &MOVASettings::FrameRate, "frames per second of the material, above 0"},
    {"DropFrame", &MOVASettings::DropFrame, "Timed Text: drop mode dropNTSC instead of nonDrop"},
    {"SsaFontName", &MOVASettings::SsaFontName, "Sub Station Alpha: font of the default style"},
    {"SsaFontSize", &MOVASettings::SsaFontSize, "Sub Station Alpha: font size, script pixels"},
    {"SsaFontColor", &MOVASettings::SsaFontColor, "Sub Station Alpha: primary colour"},
    {"SsaOutline", &MOVASettings::SsaOutline, "Sub Station Alpha: outline, script pixels"},
    {"SsaShadow", &MOVASettings::SsaShadow, "Sub Station Alpha: shadow, script pixels"},
    {"SsaOpaqueBox", &MOVASettings::SsaOpaqueBox, "Sub Station Alpha: opaque box instead of an outline"},
    {"DCinemaFontFile", &MOVASettings::DCinemaFontFile, "D-Cinema: font file of Interop documents"},
    {"DCinemaFontUrn", &MOVASettings::DCinemaFontUrn, "D-Cinema: font of SMPTE documents"},
    {"DCinemaFontSize", &MOVASettings::DCinemaFontSize, "D-Cinema: font size, points"},
    {"DCinemaBottomMargin", &MOVASettings::DCinemaBottomMargin, "D-Cinema: bottom line, percent of the height"},
    {"Reserved1", &MOVASettings::Reserved1, ""},
    {"Reserved2", &MOVASettings::Reserved2, ""},
    {"Reserved3", &MOVASettings::Reserved3, ""},
    {"DCinemaSubtitleId", &MOVASettings::DCinemaSubtitleId, "D-Cinema: Id of the document, urn:uuid:..."},
    {"DCinemaMovieTitle", &MOVASettings::DCinemaMovieTitle, "D-Cinema: title; empty takes the input's name"},
    {"DCinemaReelNumber", &MOVASettings::DCinemaReelNumber, "D-Cinema: number of the reel"},
    {"DCinemaIssueDate", &MOVASettings::DCinemaIssueDate, "D-Cinema: date and time, as 2024-05-31T12:00:00"},
    {"DCinemaLanguage", &MOVASettings::DCinemaLanguage, "D-Cinema: language, as en"},
    {"DCinemaEditRate", &MOVASettings::DCinemaEditRate, "D-Cinema: edit rate, as \"25 1\""},
    {"DCinemaTimeCodeRate", &MOVASettings::DCinemaTimeCodeRate, "D-Cinema: whole frames per second"},
    {"DCinemaStartTime", &MOVASettings::DCinemaStartTime, "D-Cinema: start, as 00:00:00:00"},
    {"DCinemaFontId", &MOVASettings::DCinemaFontId, "D-Cinema: ID of the font"},
    {"DCinemaFontUri", &MOVASettings::DCinemaFontUri, "D-Cinema: where the font is loaded from"},
    {"DCinemaFontColor", &MOVASettings::DCinemaFontColor, "D-Cinema: colour of the text"},
    {"DCinemaEffect", &MOVASettings::DCinemaEffect, "D-Cinema: border, shadow or none; empty takes all D-Cinema presets"},
    {"DCinemaEffectColor", &MOVASettings::DCinemaEffectColor, "D-Cinema: colour of the effect"},
    {"Reserved4", &MOVASettings::Reserved4, ""},
    {"Reserved5", &MOVASettings::Reserved5, ""},
    {"Reserved6", &MOVASettings::Reserved6, ""},
    {"Reserved7", &MOVASettings::Reserved7, ""},
    {"Reserved8", &MOVASettings::Reserved8, ""},
    {"Reserved9", &MOVASettings::Reserved9, ""},
    {"FcpFontSize", &MOVASettings::FcpFontSize, "Final Cut Pro Xml: font size of a title, points"},
    {"FcpFontName", &MOVASettings::FcpFontName, "Final Cut Pro Xml: font of a title"},
    {"Reserved10", &MOVASettings::Reserved10, ""},
    {"CodePage", &MOVASettings::CodePage, "code page of the input; 0 detects its encoding"},
};
// clang-format on

/// The code pages that the library decodes, beside 0, which detects; first and last number of each run.
constexpr std::pair<int32_t, int32_t> kCodePages[] = {
    {5, 5},     {437, 437}, {850, 850},   {852, 852},     {866, 866},     {874, 874},    {932, 932},
    {936, 936}, {949, 950}, {1250, 1258}, {28591, 28601}, {28603, 28605}, {65001, 65001}};

bool isCodePage(int32_t number) {
  return std::any_of(std::begin(kCodePages), std::end(kCodePages),
                     [&](const auto& run) { return run.first <= number && number <= run.second; });
}

std::string listCodePages() {
  std::vector<std::string> runs;
  for (const auto& [first, last] : kCodePages) {
    runs.push_back(first == last ? fmt::format("{}", first) : fmt::format("{} to {}", first, last));
  }
  return fmt::format("{}", fmt::join(runs, ", "));
}

std::optional<bool> parse(std::string_view text, bool) {
  const std::string folded = foldName(text);
  if (folded == "true" || folded == "1") return true;
  if (folded == "false" || folded == "0") return false;
  return std::nullopt;
}

std::optional<int32_t> parse(std::string_view text, int32_t) {
  return parseNumber<int32_t>(text);
}

std::optional<uint32_t> parse(std::string_view text, uint32_t) {
  if (text.starts_with("0x") || text.starts_with("0X")) return parseNumber<uint32_t>(text.substr(2), 16);
  return parseNumber<uint32_t>(text);
}

std::optional<double> parse(std::string_view text, double) {
  const std::optional<double> number = parseNumber<double>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<MOVAString> parse(std::string_view text, const MOVAString&) {
  return toUtf16(text);
}

constexpr std::string_view typeName(bool) {
  return "true or false";
}
constexpr std::string_view typeName(int32_t) {
  return "a whole number from -2147483648 to 2147483647";
}
constexpr std::string_view typeName(uint32_t) {
  return "a colour: 0xAARRGGBB or a number from 0 to 4294967295";
}
constexpr std::string_view typeName(double) {
  return "a number such as 25 or 29.97";
}
std::string_view typeName(const MOVAString&) {
  return "text in UTF-8";
}

std::string shown(bool value) {
  return value ? "true" : "false";
}
std::string shown(int32_t value) {
  return fmt::format("{}", value);
}
std::string shown(uint32_t value) {
  return fmt::format("0x{:08X}", value);
}
std::string shown(double value) {
  return fmt::format("{}", value);
}
std::string shown(const MOVAString& value) {
  return value.empty() ? "empty" : toUtf8(value);
}

bool isFrameRate(const Field& field) {
  return field.member == Member(&MOVASettings::FrameRate);
}

bool isCodePageField(const Field& field) {
  return field.member == Member(&MOVASettings::CodePage);
}

/// Two fields take less than their types hold.
bool isAllowed(const Field& field, const MOVASettings& settings) {
  if (isFrameRate(field)) return settings.FrameRate > 0;
  return !isCodePageField(field) || settings.CodePage == 0 || isCodePage(settings.CodePage);
}

std::string allowedValues(const Field& field) {
  if (isFrameRate(field)) return "a number of frames per second above 0";
  if (isCodePageField(field)) return fmt::format("a known code page: 0 to detect, or {}", listCodePages());
  const MOVASettings settings;
  return std::visit([&](auto member) { return std::string(typeName(settings.*member)); }, field.member);
}

[[noreturn]] void refuse(const Field& field, std::string_view value, std::string_view wanted) {
  throw Failure(kUsage, fmt::format("--set {}: \"{}\" is not {}", field.name, printable(value), wanted));
}

const Field& findField(std::string_view name) {
  std::vector<std::string> names;
  for (const Field& field : kFields) {
    if (foldName(field.name) == foldName(name)) return field;
    names.emplace_back(field.name);
  }
  std::string message = fmt::format("--set: there is no field \"{}\"", printable(name));
  const std::vector<std::string> near = nearestNames(name, names);
  if (!near.empty()) message += fmt::format("; did you mean {}?", fmt::join(near, ", "));
  throw Failure(kUsage, message + " (mova convert --help lists the fields)");
}

}  // namespace

void assignField(MOVASettings& settings, std::string_view assignment) {
  const size_t equals = assignment.find('=');
  if (equals == std::string_view::npos) {
    throw Failure(kUsage, fmt::format("--set {}: write FIELD=VALUE, as in --set FrameRate=25", printable(assignment)));
  }
  const Field& field = findField(assignment.substr(0, equals));
  const std::string_view value = assignment.substr(equals + 1);
  std::visit(
      [&](auto member) {
        const auto parsed = parse(value, settings.*member);
        if (!parsed) refuse(field, value, typeName(settings.*member));
        settings.*member = *parsed;
      },
      field.member);

  if (!isAllowed(field, settings)) refuse(field, value, allowedValues(field));
}

std::vector<FieldHelp> allFields() {
  const MOVASettings defaults = getDefaultSettings();
  std::vector<FieldHelp> fields;
  for (const Field& field : kFields) {
    const std::string value = std::visit([&](auto member) { return shown(defaults.*member); }, field.member);
    fields.push_back({field.name, field.help, allowedValues(field), value});
  }
  return fields;
}

std::vector<FieldHelp> usedFields() {
  std::vector<FieldHelp> fields = allFields();
  std::erase_if(fields, [](const FieldHelp& field) { return field.help.empty(); });
  return fields;
}

std::string describeFields() {
  std::string text = "Fields for --set, with their defaults:\n";
  for (const FieldHelp& field : usedFields()) {
    text += fmt::format("  {:<20} {}; default {}\n", field.name, field.help, field.defaultValue);
  }
  text +=
      "Reserved0 to Reserved10 are accepted and read by nothing.\n"
      "A colour is 0xAARRGGBB (alpha, red, green, blue; those of D-Cinema 0xBBGGRRAA) or a decimal number; a switch "
      "is\n"
      "true, false, 1 or 0. With a code page the first line of the input is skipped; the known ones are\n";
  return text + listCodePages() + ".\n";
}

}  // namespace mova::cli
