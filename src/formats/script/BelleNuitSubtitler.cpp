#include "formats/script/BelleNuitSubtitler.h"

#include "formats/FrameTime.h"
#include "model/Arithmetic.h"
#include "model/GlobalSettings.h"
#include "movautil/MovaUtil.h"
#include "text/ItalicRepair.h"
#include "text/Markup.h"
#include "text/Regex.h"
#include "text/Strings.h"
#include "xml/TiXMLDocument.h"

namespace mova {
namespace {

/// All of a file but the title list, which follows the last key.
constexpr WStringView skeleton =
    uR"(<?xml version="1.0" encoding="UTF-8"?>
<xmldict>
  <key>document</key><dict>
    <key>creator</key><string>SICT</string>
    <key>type</key><string>STLI</string>
    <key>version</key><real>1.4</real>
    <key>applicationversion</key><string>Belle Nuit Subtitler 1.7.8</string>
    <key>creationdate</key><date>2012-03-13 16:30:32</date>
    <key>modificationdate</key><date>2012-03-13 16:30:32</date>
  </dict>
  <key>mainleft</key><integer>40</integer>
  <key>maintop</key><integer>48</integer>
  <key>mainwidth</key><integer>825</integer>
  <key>mainheight</key><integer>886</integer>
  <key>styledt</key><false/>
  <key>exportdt</key><true/>
  <key>previewdt</key><true/>
  <key>moviedt</key><true/>
  <key>exportformat</key><string>TIFF</string>
  <key>style</key><dict>
    <key>font</key><string>Geneva</string>
    <key>size</key><integer>26</integer>
    <key>spacing</key><real>1</real>
    <key>leading</key><real>7</real>
    <key>bold</key><false/>
    <key>italic</key><false/>
    <key>underline</key><false/>
    <key>vertical</key><integer>486</integer>
    <key>halin</key><integer>1</integer>
    <key>valign</key><integer>2</integer>
    <key>standard</key><string>PAL</string>
    <key>height</key><integer>576</integer>
    <key>width</key><integer>720</integer>
    <key>widthreal</key><integer>768</integer>
    <key>antialiasing</key><integer>4</integer>
    <key>left</key><integer>40</integer>
    <key>right</key><integer>680</integer>
    <key>wrapmethod</key><integer>2</integer>
    <key>interlaced</key><true/>
    <key>textcolor</key><color>#FBFFF2</color>
    <key>textalpha</key><real>1</real>
    <key>textsoft</key><integer>0</integer>
    <key>bordercolor</key><color>#F0F10</color>
    <key>borderalpha</key><real>1</real>
    <key>bordersoft</key><integer>0</integer>
    <key>borderwidth</key><integer>6</integer>
    <key>rectcolor</key><color>#0</color>
    <key>rectalpha</key><real>0</real>
    <key>rectsoft</key><integer>0</integer>
    <key>rectform</key><integer>1</integer>
    <key>shadowcolor</key><color>#7F7F7F</color>
    <key>shadowalpha</key><real>0</real>
    <key>shadowsoft</key><integer>0</integer>
    <key>shadowx</key><integer>2</integer>
    <key>shadowy</key><integer>2</integer>
    <key>framerate</key><string>25</string>
  </dict>
  <key>folderpath</key><string></string>
  <key>prefix</key><string></string>
  <key>moviepath</key><string></string>
  <key>movieoffset</key><string>00:00:00:00</string>
  <key>moviesyncoption</key><true/>
  <key>pagesetup</key><null/>
  <key>titlelist</key>
</xmldict>)";

struct PositionRow {
  WStringView style, tag;
};

/// Finer than what is written: of all these only RIGHT, LEFT and VERTICAL(-25) are.
constexpr PositionRow positions[] = {
    {u"/STYLE RIGHT", u"{\\an3}"},         {u"/STYLE LEFT", u"{\\an1}"},          {u"/STYLE TOP", u"{\\an8}"},
    {u"/STYLE VERTICAL(-25)", u"{\\an8}"}, {u"/STYLE VERTICAL(-24)", u"{\\an8}"}, {u"/STYLE VERTICAL(-23)", u"{\\an8}"},
    {u"/STYLE VERTICAL(-22)", u"{\\an8}"}, {u"/STYLE VERTICAL(-21)", u"{\\an8}"}, {u"/STYLE VERTICAL(-20)", u"{\\an8}"},
    {u"/STYLE VERTICAL(-19)", u"{\\an8}"}, {u"/STYLE VERTICAL(-18)", u"{\\an8}"}, {u"/STYLE VERTICAL(-17)", u"{\\an5}"},
    {u"/STYLE VERTICAL(-16)", u"{\\an5}"}, {u"/STYLE VERTICAL(-15)", u"{\\an5}"}, {u"/STYLE VERTICAL(-14)", u"{\\an5}"},
    {u"/STYLE VERTICAL(-13)", u"{\\an5}"}, {u"/STYLE VERTICAL(-12)", u"{\\an5}"}, {u"/STYLE VERTICAL(-11)", u"{\\an5}"},
    {u"/STYLE VERTICAL(-10)", u"{\\an5}"},
};

/// Whether the text begins with digits where the shape has them and with the same units elsewhere.
bool hasShape(WStringView text, WStringView shape) {
  if (text.size() < shape.size()) return false;
  for (size_t i = 0; i < shape.size(); ++i) {
    if (isDigit(shape[i]) ? !isDigit(text[i]) : text[i] != shape[i]) return false;
  }
  return true;
}

/// Whatever follows the two times is not looked at.
bool isTimeLine(WStringView line) {
  return hasShape(line, u"/tc 00:00:00:00 00:00:00:00");
}

bool isFileLine(WStringView line) {
  static const Regex fileLine = createRegex(uR"(^/file\s+\d+$)");
  return line.starts_with(u"/file") && fileLine.Matches(line);
}

/// "HH:MM:SS:FF"; the frames are not limited to a second.
TimeCode frameTextToTime(WStringView text) {
  const auto number = [text](size_t position) { return wideToInt(text.substr(position, 2)); };
  const double milliseconds = number(9) * (1000.0 / GlobalSettings.FrameRate);
  return {static_cast<double>(partsToMilliseconds(number(0), number(3), number(6), lowInt32(rounded(milliseconds))))};
}

/// "HH:MM:SS:FF"; hours don't wrap.
void appendExactFrameTime(WString& out, const TimeCode& time) {
  const TimeFields fields = time.Fields();
  // As millisecondsToFrames, but with the rate in full precision.
  int32_t frames = lowInt32(rounded(static_cast<double>(fields.milliseconds) / (1000.0 / GlobalSettings.FrameRate)));
  if (frames >= 30) frames = cutToInt32(GlobalSettings.FrameRate - 0.01);
  appendClock(out, fields, u':', frames);
}

/// Empty if there is none.
WString titleListOf(const TiXMLDocument* document) {
  const XMLElement* const root = firstChildElementNamed(document, nullptr);
  if (!isNamed(root, "xmldict")) return {};
  WString key;
  WString titleList;
  for (const XMLElement* element = firstChildElementNamed(root, nullptr); element;
       element = element->NextSiblingElement()) {
    if (isNamed(element, "key")) key = elementInnerText(*element);
    if (isNamed(element, "string") && key == u"titlelist") titleList = elementInnerText(*element);
  }
  return titleList;
}

}  // namespace

WString textToNativeStyle(WStringView text) {
  WString styled = removeTagsNamed(text, {u"b", u"u", u"font"});
  const auto startsWithPosition = [&styled](WStringView digits) {
    return styled.size() >= 6 && styled.starts_with(u"{\\an") && digits.find(styled[4]) != WStringView::npos &&
           styled[5] == u'}';
  };
  const auto replacePosition = [&styled](WStringView style) {
    styled = WString(style) + trim(WStringView(styled).substr(6));
  };
  if (startsWithPosition(u"36")) {
    replacePosition(u"/STYLE RIGHT\r\n");
  } else if (startsWithPosition(u"14")) {
    replacePosition(u"/STYLE LEFT\r\n");
  } else if (startsWithPosition(u"789")) {
    replacePosition(u"/STYLE VERTICAL(-25)\r\n");
  } else if (startsWithPosition(u"25")) {
    replacePosition(u"");
  }
  return repairItalicTags(styled);
}

WString nativeStyleToText(WStringView text) {
  WString plain = trim(text);
  // One pass each: long runs of blank lines don't go as a whole.
  replaceAllInPlace(plain, u"\n\n\n", u"\n\n");
  replaceAllInPlace(plain, u"\n\n", u"\n");
  for (const PositionRow& row : positions) {
    if (plain.starts_with(row.style)) return WString(row.tag) + trim(WStringView(plain).substr(row.style.size()));
  }
  return plain;
}

WString BelleNuitSubtitler::WriteText(const Subtitle& subtitle, const WString&) {
  WString titleList;
  for (const auto& paragraph : subtitle.Paragraphs) {
    titleList += u"/tc ";
    appendExactFrameTime(titleList, paragraph->StartTime);
    titleList += u' ';
    appendExactFrameTime(titleList, paragraph->EndTime);
    titleList += u"\r\n";
    titleList += cText(textToNativeStyle(trimView(paragraph->Text)));
    titleList += u"\r\n\n";
  }

  titleList.resize(trimEndView(titleList).size());
  titleList += u"\r\n\r\n";

  TiXMLDocument document(skeleton);
  XMLElement* const text = document.NewElement("string");
  setText(*text, titleList);
  document.RootElement()->InsertEndChild(text);
  return replaceAll(documentToText(document), u"\r\n", u"\n");
}

void BelleNuitSubtitler::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  subtitle.Paragraphs.clear();
  const WString titleList = titleListOf(parsedXml(lines));
  if (!titleList.empty()) ReadTitleList(subtitle, titleList);
}

void BelleNuitSubtitler::ReadTitleList(Subtitle& subtitle, WStringView titleList) {
  Paragraph* paragraph = nullptr;
  WString text;
  const auto finishParagraph = [&] {
    if (paragraph && !trimView(text).empty()) paragraph->Text = nativeStyleToText(text);
    text.clear();
  };
  for (WStringView line : splitViews(titleList, u"\r\n", false)) {
    if (isTimeLine(line)) {
      finishParagraph();
      paragraph = &subtitle.Append({frameTextToTime(line.substr(4)), frameTextToTime(line.substr(16)), WString()});
    } else if (isFileLine(line)) {
      continue;
    } else if (paragraph) {
      text += line;
      text += u'\n';
    } else {
      ++ErrorCount;
    }
  }
  finishParagraph();
}

}  // namespace mova
