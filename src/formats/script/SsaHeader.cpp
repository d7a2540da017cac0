#include "formats/script/SsaHeader.h"

#include "formats/script/SsaStyle.h"
#include "movautil/MovaUtil.h"
#include "text/Strings.h"
#include "xml/TiXMLDocument.h"

namespace mova {
namespace {

/// Line breaks are CR LF here; the style lines bring their own.
WString headerWithStyles(WStringView title, WStringView styleLines) {
  WString header =
      u"[Script Info]\r\n"
      u"; This is a Sub Station Alpha v4 script.\r\n"
      u"Title: ";
  header += cText(title);
  header +=
      u"\r\n"
      u"ScriptType: v4.00\r\n"
      u"Collisions: Normal\r\n"
      u"PlayDepth: 0\r\n"
      u"\r\n"
      u"[V4 Styles]\r\n"
      u"Format: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, TertiaryColour, BackColour, Bold, Italic, "
      u"BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, AlphaLevel, Encoding\r\n";
  header += styleLines;
  header +=
      u"\r\n"
      u"\r\n"
      u"[Events]\r\n";
  header += ssaEventsFormat;
  return header;
}

/// Appends the fields of a style line, one after the other.
class StyleLine {
 public:
  explicit StyleLine(WString& lines) : lines_(lines) { lines_ += u"Style: "; }

  StyleLine& operator<<(WStringView field) {
    if (!first_) lines_ += u',';
    first_ = false;
    lines_ += cText(field);
    return *this;
  }
  StyleLine& operator<<(int32_t field) {
    *this << WStringView();
    appendNumber(lines_, field);
    return *this;
  }

 private:
  WString& lines_;
  bool first_ = true;
};

int32_t toArgb(const Color& color) {
  return lowInt32(int64_t{color.alpha} << 24 | color.red << 16 | color.green << 8 | color.blue);
}

/// From the numbering of v4+, which is that of a keypad, to that of v4.
WStringView v4Alignment(WStringView alignment) {
  constexpr WStringView numbers[] = {u"1", u"2", u"3", u"9", u"10", u"11", u"5", u"6", u"7"};
  const bool isKnown = alignment.size() == 1 && alignment[0] >= u'1' && alignment[0] <= u'9';
  return isKnown ? numbers[alignment[0] - u'1'] : u"2";
}

void appendStyleLine(WString& lines, const SsaStyle& style) {
  StyleLine(lines) << style.Name << style.FontName << style.FontSize << toArgb(style.Primary) << toArgb(style.Secondary)
                   << toArgb(style.OutlineColor)
                   << toArgb(style.Background)
                   // In scripts -1 is yes; here it is no and 1 is yes, on purpose.
                   << (style.Bold ? u"1" : u"-1") << (style.Italic ? u"1" : u"0") << style.BorderStyle
                   << style.OutlineWidth << style.ShadowWidth << v4Alignment(style.Alignment) << style.MarginLeft
                   << style.MarginRight << style.MarginVertical << u"0,1";
  lines += u'\n';
}

/// "rgb(r,g,b)" or what colorFromHtml makes of the text; white if it can't be read.
Color timedTextColor(WStringView text) {
  Color color;
  constexpr WStringView rgb = u"rgb(";
  if (text.starts_with(rgb)) {
    const std::vector<WString> parts = splitOnChar(trimEndView(text.substr(rgb.size()), u')'), u',', true);
    if (parts.size() >= 3) {
      color = {255, uint8_t(wideToInt(parts[0])), uint8_t(wideToInt(parts[1])), uint8_t(wideToInt(parts[2])), true};
    }
  } else {
    color = colorFromHtml(text);
  }
  return color.valid ? color : colorWhite;
}

int32_t timedTextFontSize(WString size) {
  replaceAllInPlace(size, u"em", u"");
  replaceAllInPlace(size, u"px", u"");
  return isAllDigits(size) ? wideToInt(size) : 20;
}

/// Weight and font style of the element don't reach the line, on purpose.
void appendStyleLine(WString& lines, const XMLElement& style) {
  const auto attributeOr = [&style](const char* name, WStringView otherwise) {
    return attribute(style, name).value_or(WString(otherwise));
  };
  StyleLine(lines) << attributeOr("xml:id", attributeOr("id", u"")) << attributeOr("tts:fontFamily", u"Arial")
                   << timedTextFontSize(attributeOr("tts:fontSize", u"20"))
                   << toArgb(timedTextColor(trim(attributeOr("tts:color", u"#ffffff"))))
                   << u"65535,65535,-2147483640,-1,0,1,3,0,2,10,10,10,0,1";
  lines += u'\n';
}

}  // namespace

WString defaultSsaHeader(WStringView title) {
  const SsaStyle style;
  const Color& color = style.Primary;
  WString line;
  StyleLine(line) << u"Default" << style.FontName << style.FontSize
                  << color.blue * 65536 + color.green * 256 + color.red << u"65535,65535,-2147483640,-1,0,1"
                  << style.OutlineWidth << style.ShadowWidth << u"2,10,10,10,0,1";
  return headerWithStyles(title, line);
}

WString advancedHeaderToSsaHeader(WStringView header, WStringView title) {
  const SsaStyles styles(header);
  WString lines;
  for (const WString& name : styleNamesFromHeader(header)) appendStyleLine(lines, styles.Find(name));
  return lines.empty() ? defaultSsaHeader(title) : headerWithStyles(title, lines);
}

WString timedTextHeaderToSsaHeader(WStringView header, WStringView title) {
  const TiXMLDocument document(header);
  const XMLElement* const head = findElementDeep(firstChildElementNamed(&document, nullptr), "head");
  WString lines;
  for (const XMLElement* style : collectElementsDeep(head, "style")) appendStyleLine(lines, *style);
  return headerWithStyles(title, lines);
}

}  // namespace mova
