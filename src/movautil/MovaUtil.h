/// The companion library: encodings, number conversions and whole-file reading, as the conversion library imports them.
///
/// No operation fails loudly: text that can't be read gives a default. Nothing here depends on the process's locale.
#pragma once

#include <cstdint>
#include <string>

#include "movautil/WideString.h"

#define MOVAUTIL_API __attribute__((visibility("default")))

// --- Numbers. All readers skip leading white space (units 9 to 13 and 32) and take an optional sign.

/// Decimal text; stops at the first unit that is no digit and at the limits of the type. No digits give 0.
MOVAUTIL_API int32_t wideToInt(mova::WStringView text);
MOVAUTIL_API int64_t wideToLongLong(mova::WStringView text);
/// Decimal text with "." and perhaps an exponent; no "inf", "nan" or hexadecimal form. No digits give 0, and so does
/// what is too small for a double; what is too large gives an infinity.
MOVAUTIL_API double wideToDouble(mova::WStringView text);

/// One integer through "%d", "%0Nd" with a width N, or the same with "X", which prints a negative value as the unsigned
/// one of the same 32 bits.
MOVAUTIL_API mova::WString intToWStr(int32_t value, const char16_t* format);
/// Always plain decimal; the format that callers pass is "%I64d".
MOVAUTIL_API mova::WString longLongToWStr(int64_t value, const char16_t* format);
/// Always six decimals; the format that callers pass is "%f". What is no number is "inf", "-inf", "nan" or "-nan".
MOVAUTIL_API mova::WString doubleToWStr(double value, const char16_t* format);

// --- Letters and narrow text.

/// Lower and upper case of ASCII letters; everything else stays.
MOVAUTIL_API mova::WString wStrToLower(mova::WString text);
MOVAUTIL_API mova::WString wStrToUpper(mova::WString text);

/// UTF-8 of the text: subjects of regular expressions and file names. A zero unit becomes a zero byte.
MOVAUTIL_API std::string wideToString(mova::WStringView text);
/// One unit for each byte, of the same value, up to the terminating zero.
MOVAUTIL_API mova::WString stringToWide(const signed char* text);
MOVAUTIL_API mova::WString stringToWide(const unsigned char* text);

// --- Encodings. The destination comes first; the result is the number of destination units (or bytes).

/// Lone surrogates become U+FFFD. `source` ends at its first zero unit.
/// With a null destination `count` is the length of the source in units and the result the number of bytes needed,
/// without a terminator. With a destination `count` is its room in bytes; nothing behind the room is written, no
/// character is cut in two, and the caller writes the terminator itself.
MOVAUTIL_API uint32_t movaStr_UTF16_to_UTF8(char* destination, const char16_t* source, uint32_t count);

/// `count` is the room in units. The terminator is converted and counted, so an empty source gives 1. Strict: overlong
/// forms, coded surrogates, values above U+10FFFF and truncated sequences give 0, as does too little room; the
/// destination then holds the empty text.
MOVAUTIL_API uint32_t movaStr_UTF8_to_UTF16(char16_t* destination, const char* source, uint32_t count);

/// The 8-bit code page of the system, which is Windows-1252 everywhere. `source` ends at its first zero byte; `count`
/// is the room in units and text beyond it is cut. The terminator is written and counted where there is room for it.
MOVAUTIL_API uint32_t movaStr_ANSI_to_UTF16(char16_t* destination, const char* source, uint32_t count);

/// As movaStr_ANSI_to_UTF16, for a code page by its Windows number: 1250 to 1258, 437, 850, 852, 866, 874, 932, 936,
/// 949, 950, 28591 to 28605 and 65001; 5 stands for 1252. In single-byte pages an undefined byte becomes the unit of
/// the same value, in the others (932 to 950 and 65001) an undecodable byte becomes U+FFFD and no character is cut in
/// two. An unknown page (28602 is one) gives 0 and the empty text.
///
/// From a single-byte page no more than `count` bytes are read, so that as many need no zero byte behind them.
MOVAUTIL_API uint32_t movaStr_CodePage_to_UTF16(char16_t* destination, const char* source, uint32_t count,
                                                uint32_t codePage);

// --- Files. A handle is 0 or all bits set on failure.

using MovaHandle = intptr_t;

/// Non-zero for whatever bears the name, a directory too.
MOVAUTIL_API int32_t movaOSFileExists(const char* fileName);
/// Opens an existing regular file for reading, which is access 0x80000000 and disposition 3; anything else fails, and
/// so does a directory, a device or a pipe. The other arguments are not used.
MOVAUTIL_API MovaHandle movaOSCreateFile(const char* fileName, uint32_t access, uint32_t shareMode, void* security,
                                         uint32_t disposition, uint32_t flags, MovaHandle templateFile);
/// Non-zero on success.
MOVAUTIL_API int32_t movaOSGetFileSizeEx(MovaHandle file, int64_t* size);
/// Reads `count` bytes, or what is left of the file; non-zero on success. `overlapped` is not used.
MOVAUTIL_API int32_t movaOSReadFile(MovaHandle file, void* buffer, uint32_t count, uint32_t* countRead,
                                    void* overlapped);
MOVAUTIL_API int32_t movaOSCloseFile(MovaHandle file);
