#include "formats/script/SsaStyle.h"

#include <array>
#include <iterator>

#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

enum Column {
  NameColumn,
  FontNameColumn,
  FontSizeColumn,
  PrimaryColumn,
  SecondaryColumn,
  TertiaryColumn,
  OutlineColorColumn,
  BackgroundColumn,
  BoldColumn,
  ItalicColumn,
  UnderlineColumn,
  OutlineWidthColumn,
  ShadowWidthColumn,
  AlignmentColumn,
  MarginLeftColumn,
  MarginRightColumn,
  MarginVerticalColumn,
  BorderStyleColumn,
  ColumnCount,
};

/// As Format lines spell them, in lower case.
constexpr WStringView columnNames[] = {
    u"name",          u"fontname",   u"fontsize", u"primarycolour", u"secondarycolour", u"tertiarycolour",
    u"outlinecolour", u"backcolour", u"bold",     u"italic",        u"underline",       u"outline",
    u"shadow",        u"alignment",  u"marginl",  u"marginr",       u"marginv",         u"borderstyle",
};
static_assert(std::size(columnNames) == ColumnCount);

/// Reads the style lines of a header, one after the other, into one record.
class StyleReader {
 public:
  /// Whether the line is a style line that gives a name.
  bool ReadLine(WStringView line);

  SsaStyle Style;

 private:
  void ReadFormat(WStringView format);
  void ReadField(Column column, WStringView field);

  std::array<size_t, ColumnCount> indices_ = filledWith(WStringView::npos);

  static constexpr std::array<size_t, ColumnCount> filledWith(size_t index) {
    std::array<size_t, ColumnCount> indices{};
    indices.fill(index);
    return indices;
  }
};

/// Blanks may stand anywhere in and before "style:".
bool isStyleLine(WStringView trimmed) {
  WString start;
  for (char16_t unit : trimmed) {
    if (unit == u' ') continue;
    start += unit;
    if (start.size() == 6) break;
  }
  return equalsIgnoreCase(start, u"style:");
}

bool StyleReader::ReadLine(WStringView line) {
  if (line.size() <= 10) return false;
  const WStringView trimmed = trimView(line);
  if (startsWithIgnoreCase(trimmed, u"format:")) {
    // One unit behind the colon is skipped.
    if (trimmed.size() > 8) ReadFormat(trimmed.substr(8));
    return false;
  }
  if (!isStyleLine(trimmed)) return false;
  Style.RawLine = line;
  bool hasName = false;
  forEachPiece(line.substr(6), u',', [&](size_t index, WStringView field) {
    for (size_t column = 0; column < ColumnCount; ++column) {
      if (indices_[column] != index) continue;
      ReadField(static_cast<Column>(column), trimView(field));
      hasName = hasName || column == NameColumn;
      break;
    }
  });
  return hasName;
}

void StyleReader::ReadFormat(WStringView format) {
  forEachPiece(format, u',', [&](size_t index, WStringView item) {
    for (size_t column = 0; column < ColumnCount; ++column) {
      if (equalsIgnoreCase(trimView(item), columnNames[column])) indices_[column] = index;
    }
  });
}

void StyleReader::ReadField(Column column, WStringView field) {
  const WString value = wStrToLower(WString(field));
  const auto readNumber = [&value](int32_t& number) {
    if (isAllDigits(value)) number = wideToInt(value);
  };
  // "-1", which is how scripts say yes, means no here, on purpose.
  const bool isOne = value == u"1";
  switch (column) {
    case NameColumn:
      Style.Name = field;
      break;
    case FontNameColumn:
      Style.FontName = value;  // In lower case, on purpose.
      break;
    case FontSizeColumn:
      return readNumber(Style.FontSize);
    case PrimaryColumn:
      Style.Primary = ssaColorToColor(value, colorWhite);
      break;
    case SecondaryColumn:
      Style.Secondary = ssaColorToColor(value, colorYellow);
      break;
    case TertiaryColumn:
      Style.Tertiary = ssaColorToColor(value, colorYellow);
      break;
    case OutlineColorColumn:
      Style.OutlineColor = ssaColorToColor(value, colorBlack);
      break;
    case BackgroundColumn:
      Style.Background = ssaColorToColor(value, colorBlack);
      break;
    case BoldColumn:
      Style.Bold = isOne;
      break;
    case ItalicColumn:
      Style.Italic = isOne;
      break;
    case UnderlineColumn:
      Style.Underline = isOne;
      break;
    case OutlineWidthColumn:
      return readNumber(Style.OutlineWidth);
    case ShadowWidthColumn:
      return readNumber(Style.ShadowWidth);
    case AlignmentColumn:
      Style.Alignment = value;
      break;
    case MarginLeftColumn:
      return readNumber(Style.MarginLeft);
    case MarginRightColumn:
      return readNumber(Style.MarginRight);
    case MarginVerticalColumn:
      return readNumber(Style.MarginVertical);
    case BorderStyleColumn:
      Style.BorderStyle = value;
      break;
    case ColumnCount:
      break;
  }
}

}  // namespace

Color ssaFontColor() {
  const uint32_t color = GlobalSettings.SsaFontColor;
  return {uint8_t(color >> 24), uint8_t(color >> 16), uint8_t(color >> 8), uint8_t(color), true};
}

WString defaultSsaStyleLine() {
  const SsaStyle style;
  WString line = u"Style: Default,";
  line += style.FontName;
  line += u',';
  appendNumber(line, style.FontSize);
  line += u',';
  line += colorToSsaHex(style.Primary);
  line += u",&H0300FFFF,&H00000000,&H02000000,0,0,0,0,100,100,0,0,";
  line += style.BorderStyle;
  line += u',';
  appendNumber(line, style.OutlineWidth);
  line += u',';
  appendNumber(line, style.ShadowWidth);
  line += u",2,10,10,10,1";
  return line;
}

std::vector<WString> styleNamesFromHeader(WStringView header) {
  const WString defaultLine = header.empty() ? defaultSsaStyleLine() : WString();
  std::vector<WString> names;
  for (WStringView line : splitViews(header.empty() ? defaultLine : header, u"\r\n", false)) {
    if (!startsWithIgnoreCase(line, u"style:")) continue;
    const size_t comma = line.find(u',');
    if (comma != WStringView::npos) names.push_back(trim(line.substr(6, comma - 6)));
  }
  return names;
}

SsaStyles::SsaStyles(WStringView header) {
  StyleReader reader;
  for (WStringView line : splitViews(header, u"\r\n", true)) {
    if (!reader.ReadLine(line)) continue;
    if (!first_) {
      first_ = reader.Style;
    } else if (reader.Style.Name != first_->Name) {
      other_ = reader.Style;
      break;
    }
  }
  for (auto* style : {&first_, &other_}) {
    if (*style) (*style)->LoadedFromHeader = true;
  }
}

SsaStyle SsaStyles::Find(WStringView name) const {
  if (first_ && !name.empty()) {
    if (first_->Name != name) return *first_;
    if (other_) return *other_;
  }
  SsaStyle style;
  style.Name = name;
  return style;
}

SsaStyle getSsaStyle(WStringView name, WStringView header) {
  return SsaStyles(header).Find(name);
}

}  // namespace mova
