/// Mova: conversion of closed-caption and subtitle files.
///
/// A conversion is one call of movaConvertCC(): it reads a file, finds out by itself which format the file is in, and
/// writes its captions in another format. This header is all that a caller needs; link with libmova.
///
///     #include <mova/mova.h>
///     int main() { return movaConvertCC(u"film.srt", u"WebVTT", u"film.vtt", nullptr); }
///
/// Conversions of one process must not overlap: the settings of the running conversion are process-wide and unguarded.
#pragma once

#include <cstdint>
#include <string>

#if defined(MOVA_STATIC)
#define MOVA_API
#else
#define MOVA_API __attribute__((visibility("default")))
#endif

/// The text type of the library: UTF-16 units. Lengths and positions count units; a surrogate pair counts as two.
using MOVAString = std::u16string;

/// All that a caller can configure. The order of the fields is part of the binary interface and never changes.
///
/// Take getDefaultSettings() and change what differs: a default-constructed record is all zeros and empty strings, not
/// the defaults.
/// The fields named Reserved are copied with the record and read by nothing.
struct MOVASettings {
  bool Reserved0 = false;

  /// Frames per second of the material; default 29.97. Used by every format that converts between frames and time. A
  /// loader whose document states a rate of its own (Timed Text, D-Cinema, Final Cut Pro Xml) overrides it for the rest
  /// of the conversion.
  double FrameRate = 0.0;
  /// Timed Text: dropMode "dropNTSC" if true, else "nonDrop"; default false.
  bool DropFrame = false;

  /// Sub Station Alpha, default style: font name; default "Arial".
  MOVAString SsaFontName;
  /// Sub Station Alpha, default style: font size in script pixels, cut to an integer; default 20.
  double SsaFontSize = 0.0;
  /// Sub Station Alpha, default style: primary colour, alpha in the top byte, then red, green, and blue in the low
  /// byte; default opaque white, 0xFFFFFFFF.
  uint32_t SsaFontColor = 0;
  /// Sub Station Alpha, default style: width of the outline in script pixels; default 2.
  int32_t SsaOutline = 0;
  /// Sub Station Alpha, default style: depth of the shadow in script pixels; default 1.
  int32_t SsaShadow = 0;
  /// Sub Station Alpha, default style: BorderStyle 3 (opaque box) if true, else 1 (outline); default false.
  bool SsaOpaqueBox = false;

  /// D-Cinema: source of DCinemaFontUri for Interop documents; default "Arial.ttf".
  MOVAString DCinemaFontFile;
  /// D-Cinema: source of DCinemaFontUri for SMPTE 428-7 documents; default
  /// "urn:uuid:3dec6dc0-39d0-498d-97d0-928d2eb78391".
  MOVAString DCinemaFontUrn;
  /// D-Cinema: Size of the font element in points; default 42. 0 makes the writers fill the group as
  /// InitializeDCinameSettings(true) does.
  int32_t DCinemaFontSize = 0;
  /// D-Cinema: vertical position of the bottom line, in percent of the picture's height; default 8.
  int32_t DCinemaBottomMargin = 0;

  double Reserved1 = 0.0;
  int32_t Reserved2 = 0;
  int32_t Reserved3 = 0;

  /// D-Cinema: Id of the document; default empty.
  MOVAString DCinemaSubtitleId;
  /// D-Cinema: ContentTitleText; default empty, which takes the base name of the input.
  MOVAString DCinemaMovieTitle;
  /// D-Cinema: ReelNumber; default empty.
  MOVAString DCinemaReelNumber;
  /// D-Cinema: IssueDate, an ISO 8601 date and time; default empty.
  MOVAString DCinemaIssueDate;
  /// D-Cinema: Language; default empty.
  MOVAString DCinemaLanguage;
  /// D-Cinema: EditRate, "numerator denominator"; default empty.
  MOVAString DCinemaEditRate;
  /// D-Cinema: TimeCodeRate, frames per second as an integer; default empty.
  MOVAString DCinemaTimeCodeRate;
  /// D-Cinema: StartTime, a time code; default empty.
  MOVAString DCinemaStartTime;
  /// D-Cinema: ID of the font; default empty.
  MOVAString DCinemaFontId;
  /// D-Cinema: text of LoadFont; default empty.
  MOVAString DCinemaFontUri;
  /// D-Cinema: Color of the font element. Alpha in the low byte (byte 0), then red, green, and blue in the top byte;
  /// default 0.
  uint32_t DCinemaFontColor = 0;
  /// D-Cinema: Effect of the font element ("border", "shadow", "none"); default empty, which makes the writers fill the
  /// group as InitializeDCinameSettings(true) does.
  MOVAString DCinemaEffect;
  /// D-Cinema: EffectColor of the font element, bytes as in DCinemaFontColor; default 0.
  uint32_t DCinemaEffectColor = 0;

  int32_t Reserved4 = 0;
  int32_t Reserved5 = 0;
  int32_t Reserved6 = 0;
  bool Reserved7 = false;
  int32_t Reserved8 = 0;
  MOVAString Reserved9;

  /// Final Cut Pro Xml: font size of a title in points; default 18.
  int32_t FcpFontSize = 0;
  /// Final Cut Pro Xml: font of a title; default "Lucida Grande".
  MOVAString FcpFontName;

  MOVAString Reserved10;

  /// Code page of the input. 0, the default, detects: UTF-8 and UTF-16 by their marks, then UTF-8, else Windows-1252.
  /// Any other value is the Windows number of a code page (1250 to 1258, 437, 850, 852, 866, 874, 932, 936, 949, 950,
  /// 28591 to 28605, 65001; 5 stands for 1252); nothing is detected then, the file's first line is dropped, and each
  /// line is limited to 260 units.
  int32_t CodePage = 0;
};

/// Converts one file.
///
/// @param inputPath   the file to read. Its UTF-8 form must be shorter than 260 bytes.
/// @param formatName  the target: a name that movaOutputTypes() reports, case and blanks ignored. Not an extension.
/// @param outputPath  the file to write. Everything from the last "." of the whole path on, directories included, is
///                    replaced by the target's extension; a path without a "." gets the extension appended. An existing
///                    file is replaced.
/// @param settings    borrowed for the call; null means getDefaultSettings(). Replaces whatever an earlier conversion
///                    used or an input changed.
/// @return 0: text was produced and written (UTF-8, no byte order mark unless the target's text holds one). 1: no such
///         target, or the target gave no text; the output exists and is empty. 2: no format recognised the input, which
///         includes an input that can't be opened; the output is not touched. Failures to create or write the output
///         are not reported.
/// @throws std::bad_alloc when memory runs out.
MOVA_API uint32_t movaConvertCC(MOVAString inputPath, MOVAString formatName, MOVAString outputPath,
                                const MOVASettings* settings);

/// Lists the formats, in the order in which an input is tried.
///
/// @param names       receives an array with the name of each format, a zero-terminated UTF-16 text.
/// @param extensions  receives an array with the extension of each format, dot included.
/// @return the number of entries. Both arrays belong to the caller, who releases them with movaFreeOutputTypes().
MOVA_API uint32_t movaOutputTypes(char16_t**& names, char16_t**& extensions);

/// The same for texts of the wide character type.
MOVA_API uint32_t movaOutputTypes(wchar_t**& names, wchar_t**& extensions);

/// Releases what movaOutputTypes() gave, texts and arrays.
///
/// @param count  what movaOutputTypes() returned.
/// @return always 0.
MOVA_API uint32_t movaFreeOutputTypes(char16_t**& names, char16_t**& extensions, uint32_t count);

/// The same for texts of the wide character type.
MOVA_API uint32_t movaFreeOutputTypes(wchar_t**& names, wchar_t**& extensions, uint32_t count);

/// The settings that a conversion uses when it is given none.
MOVA_API MOVASettings getDefaultSettings();

/// Fills the D-Cinema group of the process-wide settings: with a fresh identifier, today's local date and the values
/// that SMPTE 428-7 documents take if `smpte` is true, else those of Interop documents. A following conversion replaces
/// the process-wide settings, so that the call has no effect on it; the D-Cinema writers use it themselves. (The name
/// is spelt as callers know it.)
MOVA_API void InitializeDCinameSettings(bool smpte);
