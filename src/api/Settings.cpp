#include <ctime>

#include "model/GlobalSettings.h"
#include "mova/mova.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

/// Local time as "2026-1-31T00:00:00.000-00:00" without the leading zeros of the year; the offset is a fixed text.
WString issueDate() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  WString text;
  appendNumber(text, 1900 + int64_t{local.tm_year});
  const auto append = [&text](char16_t separator, int value) {
    text += separator;
    appendNumber(text, value, 2);
  };
  append(u'-', local.tm_mon + 1);
  append(u'-', local.tm_mday);
  append(u'T', local.tm_hour);
  append(u':', local.tm_min);
  append(u':', local.tm_sec);
  return text += u".000-00:00";
}

}  // namespace
}  // namespace mova

MOVASettings getDefaultSettings() {
  MOVASettings settings;
  settings.Reserved0 = true;
  settings.FrameRate = 29.97;
  settings.SsaFontName = u"Arial";
  settings.SsaFontSize = 20.0;
  settings.SsaFontColor = 0xFFFFFFFF;
  settings.SsaOutline = 2;
  settings.SsaShadow = 1;
  settings.DCinemaFontFile = u"Arial.ttf";
  settings.DCinemaFontUrn = u"urn:uuid:3dec6dc0-39d0-498d-97d0-928d2eb78391";
  settings.DCinemaFontSize = 42;
  settings.DCinemaBottomMargin = 8;
  settings.Reserved2 = 5;
  settings.Reserved3 = 5;
  settings.Reserved6 = 43;
  settings.Reserved7 = true;
  settings.Reserved9 = u"Default";
  settings.FcpFontSize = 18;
  settings.FcpFontName = u"Lucida Grande";
  return settings;
}

void InitializeDCinameSettings(bool smpte) {
  using namespace mova;
  MOVASettings& s = GlobalSettings;
  if (smpte) {
    s.DCinemaSubtitleId = u"urn:uuid:" + newGuid();
    s.DCinemaLanguage = u"en";
    s.DCinemaFontUri = s.DCinemaFontUrn;
    s.DCinemaFontId = u"theFontId";
  } else {
    s.DCinemaSubtitleId = newGuid();
    s.DCinemaLanguage = u"English";
    s.DCinemaFontUri = s.DCinemaFontFile;
    s.DCinemaFontId = u"Arial";
  }
  s.DCinemaIssueDate = issueDate();
  s.DCinemaMovieTitle = u"title";
  s.DCinemaReelNumber = u"1";
  s.DCinemaFontColor = 0xFFFFFFFF;
  s.DCinemaEffect = u"border";
  s.DCinemaEffectColor = 0x000000FF;  // opaque black: alpha is byte 0
  s.Reserved4 = -1;
  s.Reserved5 = -1;
}
