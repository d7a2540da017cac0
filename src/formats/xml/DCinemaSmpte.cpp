#include "formats/xml/DCinemaSmpte.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "formats/FrameTime.h"
#include "formats/xml/DCinemaRuns.h"
#include "model/Arithmetic.h"
#include "model/GlobalSettings.h"
#include "movautil/MovaUtil.h"
#include "text/Color.h"
#include "text/Markup.h"
#include "text/Strings.h"

namespace mova {
namespace {

// --- Recognising.

/// Whether a reel begins anywhere. Both editions ask this first, of every file; most files are none, and then the lines
/// need not be joined.
bool holdsReel(const Lines& lines) {
  const auto holds = [](WStringView text) {
    for (size_t i = 0; (i = findText(text, u"Reel", i)) != WStringView::npos; ++i) {
      const WStringView before = text.substr(0, i);
      if (before.ends_with(u"<Subtitle") || before.ends_with(u"<dcst:Subtitle")) return true;
    }
    return false;
  };
  return holds(lines.Units()) && holds(joinedText(lines));
}

WString namespaceOf(WStringView year) {
  return u"http://www.smpte-ra.org/schemas/428-7/" + WString(year) + u"/DCST";
}

WString namespaceAttribute(WStringView year) {
  return u"xmlns=\"" + namespaceOf(year) + u"\"";
}

// --- Writing.

/// "[year]" stands for the year of the edition. All values but the annotation and the weight are replaced, and the
/// white space between the elements is the printer's.
constexpr WStringView skeleton =
    uR"(<dcst:SubtitleReel xmlns:dcst="http://www.smpte-ra.org/schemas/428-7/[year]/DCST"
                   xmlns:xs="http://www.w3.org/2001/XMLSchema">
  <dcst:Id>urn:uuid:7be835a3-cfb4-43d0-bb4b-f0b4c95e962e</dcst:Id>
  <dcst:ContentTitleText></dcst:ContentTitleText>
  <dcst:AnnotationText>This is a subtitle file</dcst:AnnotationText>
  <dcst:IssueDate>2012-06-26T12:33:59.000-00:00</dcst:IssueDate>
  <dcst:ReelNumber>1</dcst:ReelNumber>
  <dcst:Language>en</dcst:Language>
  <dcst:EditRate>25 1</dcst:EditRate>
  <dcst:TimeCodeRate>25</dcst:TimeCodeRate>
  <dcst:StartTime>00:00:00:00</dcst:StartTime>
  <dcst:LoadFont ID="theFontId">urn:uuid:3dec6dc0-39d0-498d-97d0-928d2eb78391</dcst:LoadFont>
  <dcst:SubtitleList>
    <dcst:Font ID="theFontId" Size="39" Weight="normal" Color="FFFFFFFF" Effect="border" EffectColor="FF000000">
    </dcst:Font>
  </dcst:SubtitleList>
</dcst:SubtitleReel>)";

/// Only the top byte of the setting shows, and it shows as red, on purpose: opaque white becomes "FFFF0000".
WString colorText(uint32_t setting) {
  const Color color{255, static_cast<uint8_t>(setting >> 24), 0, 0, true};
  return u"FF" + colorToHexString(color).substr(1);
}

void fillMissingSettings(const WString& title) {
  MOVASettings& s = GlobalSettings;
  if (s.DCinemaMovieTitle.empty()) s.DCinemaMovieTitle = title;
  // This replaces the title, on purpose.
  if (s.DCinemaFontSize == 0 || s.DCinemaEffect.empty()) InitializeDCinameSettings(true);
  if (!s.DCinemaSubtitleId.starts_with(u"urn:uuid:")) s.DCinemaSubtitleId = u"urn:uuid:" + newGuid();
  if (s.DCinemaLanguage.empty()) s.DCinemaLanguage = u"en";
  if (s.DCinemaEditRate.empty() || s.DCinemaTimeCodeRate.empty()) {
    const bool isFilm = s.FrameRate == 24.0;
    s.DCinemaEditRate = isFilm ? u"24 1" : u"25 1";
    s.DCinemaTimeCodeRate = isFilm ? u"24" : u"25";
  }
  if (s.DCinemaStartTime.empty()) s.DCinemaStartTime = u"00:00:00:00";
}

/// Fills the skeleton's properties from the settings. Gives the element that takes the subtitles.
XMLElement& fillProperties(XMLElement* root) {
  const MOVASettings& s = GlobalSettings;
  const auto fill = [root](const char* name, const WString& value) { setText(*findElementDeep(root, name), value); };
  fill("dcst:ContentTitleText", s.DCinemaMovieTitle);
  fill("dcst:Id", s.DCinemaSubtitleId);
  fill("dcst:ReelNumber", s.DCinemaReelNumber);
  fill("dcst:IssueDate", s.DCinemaIssueDate);
  fill("dcst:Language", s.DCinemaLanguage);
  fill("dcst:EditRate", s.DCinemaEditRate);
  fill("dcst:TimeCodeRate", s.DCinemaTimeCodeRate);
  fill("dcst:StartTime", s.DCinemaStartTime);
  fill("dcst:LoadFont", s.DCinemaFontUri);

  const WString fontId = s.DCinemaFontId.empty() ? u"Font1" : s.DCinemaFontId;
  setAttribute(*findElementDeep(root, "dcst:LoadFont"), "ID", fontId);
  XMLElement& font = *findElementDeep(root, "dcst:Font");
  font.SetAttribute("Size", s.DCinemaFontSize);
  setAttribute(font, "Color", colorText(s.DCinemaFontColor));
  setAttribute(font, "ID", fontId);
  setAttribute(font, "Effect", s.DCinemaEffect);
  setAttribute(font, "EffectColor", colorText(s.DCinemaEffectColor));
  return font;
}

/// Where the rows of a subtitle stand, told by the position code at the start of its text. Several may hold.
struct Alignment {
  explicit Alignment(WStringView text) {
    const auto startsWith = [text](std::initializer_list<WStringView> codes) {
      return std::any_of(codes.begin(), codes.end(), [text](WStringView code) { return text.starts_with(code); });
    };
    left = startsWith({u"{\\a1}", u"{\\a5}", u"{\\a9}", u"{\\an1}", u"{\\an4}", u"{\\an7}"});
    right = startsWith({u"{\\a3}", u"{\\a7}", u"{\\a11}", u"{\\an3}", u"{\\an6}", u"{\\an9}"});
    top = startsWith({u"{\\a5}", u"{\\a6}", u"{\\a7}", u"{\\an7}", u"{\\an8}", u"{\\an9}"});
    middle = startsWith({u"{\\a9}", u"{\\a10}", u"{\\a11}", u"{\\an4}", u"{\\an5}", u"{\\an6}"});
  }

  const char* Valign() const { return top ? "top" : middle ? "center" : "bottom"; }
  const char* Halign() const { return left ? "left" : right ? "right" : "center"; }

  bool left = false;
  bool right = false;
  bool top = false;
  bool middle = false;
};

/// Half the height of the rows above the middle, were it not negated as an unsigned number, on purpose: with any rows
/// of a positive height that is so large that its conversion overflows, and the position is -2147483647.
int32_t middlePosition(size_t rows, int32_t step) {
  const uint64_t negated = 0 - uint64_t{rows} * static_cast<uint64_t>(int64_t{step});
  const double half = static_cast<double>(negated) / 2.0;
  const int32_t cut = cutToInt32(half);
  return half - cut < 0.5 ? cut : wrappingAdd(cut, 1);
}

/// The position of the first row.
int32_t firstPosition(const Alignment& alignment, size_t rows, int32_t step) {
  if (alignment.top) return GlobalSettings.DCinemaBottomMargin;
  if (alignment.middle) return middlePosition(rows, step);
  const int32_t rowsBelow = wrappingSubtract(lowInt32(static_cast<int64_t>(rows)), 1);
  return wrappingAdd(wrappingMultiply(rowsBelow, step), GlobalSettings.DCinemaBottomMargin);
}

// --- Reading.

bool isItalic(const XMLElement& element) {
  return equalsIgnoreCase(attributeOrEmpty(element, "Italic"), u"yes");
}

/// The position code of a row, or an empty text for a row that is bottom centre.
WStringView positionCode(const XMLElement& row) {
  const WString halign = attributeOrEmpty(row, "Halign");
  const WString valign = attributeOrEmpty(row, "Valign");
  const bool left = halign == u"left";
  const bool right = halign == u"right";
  if (valign == u"top") return left ? u"{\\an7}" : right ? u"{\\an9}" : u"{\\an8}";
  if (valign == u"center") return left ? u"{\\an4}" : right ? u"{\\an6}" : u"{\\an5}";
  return left ? u"{\\an1}" : right ? u"{\\an3}" : u"";
}

void appendRun(WString& text, const XMLElement& run) {
  const WString inner = elementInnerText(run);
  const bool isFont = isNamed(&run, "Font");
  const bool italic = isFont && isItalic(run);
  const std::optional<WString> color = isFont ? attribute(run, "Color") : std::nullopt;
  if (color) {
    text += italic ? u"<i><font color=\"" : u"<font color=\"";
    text += normalizeColor(*color);
    text += u"\">";
    text += inner;
    text += italic ? u"</font><i>" : u"</font>";  // The second "<i>" is on purpose.
  } else if (italic) {
    text += u"<i>" + inner + u"</i>";
  } else {
    text += inner;
  }
}

/// The text of a subtitle: rows at equal positions run together.
WString textOf(const XMLElement& subtitle) {
  WString text;
  WString lastPosition;
  for (const XMLElement* child = subtitle.FirstChildElement(); child; child = child->NextSiblingElement()) {
    if (!isNamed(child, "Text")) {
      text += elementInnerText(*child);
      continue;
    }
    const WString position = attributeOrEmpty(*child, "Vposition");
    if (position != lastPosition) {
      if (!text.empty() && !lastPosition.empty()) text += u"\r\n";
      lastPosition = position;
    }
    const WStringView code = positionCode(*child);
    if (!code.empty() && !text.starts_with(u"{\\an")) text.insert(0, code);

    const XMLElement* run = child->FirstChildElement();
    if (!run) text += elementInnerText(*child);
    for (; run; run = run->NextSiblingElement()) appendRun(text, *run);  // Bare text beside runs is not read.
  }
  return text;
}

/// Puts the tags around the text, behind its position code.
void makeItalic(WString& text) {
  constexpr size_t codeLength = 6;  // "{\an8}"
  text.insert(text.starts_with(u"{\\an") && text.size() > codeLength ? codeLength : 0, u"<i>");
  text += u"</i>";
}

}  // namespace

WString normalizeColor(WStringView text) {
  const WString color = wStrToLower(trim(text));
  if (color.find_first_not_of(u"#0123456789abcdef") != WString::npos) return WString(text);
  return color.starts_with(u'#') ? color : u"#" + color;
}

uint32_t parseHexColor(WStringView text) {
  const Color color = colorFromHtml(text);
  return uint32_t{color.alpha} | uint32_t{color.red} << 8 | uint32_t{color.green} << 16 | uint32_t{color.blue} << 24;
}

WString DCinemaSmpte::timeCodeToText(TimeCode timeCode) const {
  const TimeFields fields = timeCode.Fields();
  int64_t frames = rounded(static_cast<double>(fields.milliseconds) / (1000.0 / frameRate));
  // The limit is the rate of the conversion, what replaces it the rate of the reel, on purpose.
  if (static_cast<double>(frames) >= GlobalSettings.FrameRate) frames = cutToInt64(frameRate - 0.01);
  WString text;
  appendClock(text, fields, u':', lowInt32(frames));
  return text;
}

std::optional<TimeCode> DCinemaSmpte::textToTimeCode(WStringView text) const {
  const std::vector<WStringView> pieces = splitViews(text, u":.,", false);
  if (pieces.size() < 4) return std::nullopt;
  const int64_t milliseconds = std::min<int64_t>(rounded(wideToInt(pieces[3]) * (1000.0 / frameRate)), 999);
  return TimeCode{static_cast<double>(
      partsToMilliseconds(wideToInt(pieces[0]), wideToInt(pieces[1]), wideToInt(pieces[2]), lowInt32(milliseconds)))};
}

bool DCinemaSmpte::Recognizes(const Lines& lines, const WString&) {
  if (!lines.Derived<holdsReel>()) return false;
  // A file that names neither edition is for whichever is asked first.
  if (findText(joinedText(lines), namespaceOf(otherYear_)) != WString::npos) return false;
  WString text = replaceAll(joinedText(lines), u"<dcst:", u"<");
  replaceAllInPlace(text, u"</dcst:", u"</");
  replaceAllInPlace(text, namespaceAttribute(year_), u"");
  const TiXMLDocument document(text);
  return findElementDeep(document.RootElement(), "Subtitle") != nullptr;
}

/// A rate that can't be read leaves `frameRate` as it is.
void DCinemaSmpte::TakeEditRate() {
  const std::vector<WString> numbers = splitOnChar(GlobalSettings.DCinemaEditRate, u' ', true);
  if (numbers.size() != 2 || !IsRateNumber(numbers[0]) || !IsRateNumber(numbers[1])) return;
  frameRate = wideToDouble(numbers[0]) / wideToDouble(numbers[1]);
}

WString DCinemaSmpte::WriteText(const Subtitle& subtitle, const WString& title) {
  TakeEditRate();  // Before a missing rate is filled in, on purpose.
  fillMissingSettings(title);
  TiXMLDocument document(replaceAll(skeleton, u"[year]", year_));

  XMLElement* subtitleElement = nullptr;
  size_t next = 0;
  int32_t spotNumber = 0;
  DocumentStream stream;
  stream.parent = &fillProperties(document.RootElement());
  stream.nextChild = [&]() -> const XMLElement* {
    if (subtitleElement) document.DeleteNode(std::exchange(subtitleElement, nullptr));
    while (next < subtitle.Paragraphs.size()) {
      const Paragraph& paragraph = *subtitle.Paragraphs[next++];
      if (!paragraph.Text.empty()) return subtitleElement = NewSubtitle(document, paragraph, ++spotNumber);
    }
    return nullptr;
  };
  stream.rewrite = [](WString& text) {
    replaceAllInPlace(text, u"encoding=\"utf-8\"", u"encoding=\"UTF-8\"");
    replaceAllInPlace(text, u" xmlns:dcst=\"dcst\"", u"");
  };
  return documentToText(document, stream);
}

XMLElement* DCinemaSmpte::NewSubtitle(TiXMLDocument& document, const Paragraph& paragraph, int32_t spotNumber) const {
  XMLElement* subtitle = document.NewElement("dcst:Subtitle");
  subtitle->SetAttribute("SpotNumber", spotNumber);
  subtitle->SetAttribute("FadeUpTime", "00:00:00:00");
  subtitle->SetAttribute("FadeDownTime", "00:00:00:00");
  setAttribute(*subtitle, "TimeIn", timeCodeToText(paragraph.StartTime));
  setAttribute(*subtitle, "TimeOut", timeCodeToText(paragraph.EndTime));

  const Alignment alignment(paragraph.Text);
  WString plain = paragraph.Text;
  const std::vector<WStringView> lines = splitViews(removeBraceTags(plain), u"\r\n", true);
  const auto step = static_cast<int32_t>(rounded(GlobalSettings.DCinemaFontSize / 7.4));
  int32_t position = firstPosition(alignment, lines.size(), step);

  DCinemaRuns runs;
  for (WStringView line : lines) {
    XMLElement* row = subtitle->InsertNewChildElement("dcst:Text");
    row->SetAttribute("Vposition", position);
    row->SetAttribute("Valign", alignment.Valign());
    row->SetAttribute("Halign", alignment.Halign());
    row->SetAttribute("Direction", "ltr");
    PutMarkup(*row, runs.MarkupOf(line));
    position = alignment.top ? wrappingAdd(position, step) : wrappingSubtract(position, step);
  }
  if (lines.empty()) {
    XMLElement* row = subtitle->InsertNewChildElement("dcst:Text");
    row->SetAttribute("Vposition", position);
    row->SetAttribute("Valign", "bottom");
    row->SetText(" ");
  }
  return subtitle;
}

/// Fills the D-Cinema group with fresh values, then with what the reel states.
void DCinemaSmpte::LoadSettings(const XMLElement* root) const {
  MOVASettings& s = GlobalSettings;
  InitializeDCinameSettings(true);
  const auto take = [&](const char* name, WString& setting) {
    if (const XMLElement* element = FindProperty(root, name)) setting = elementInnerText(*element);
  };
  take("Id", s.DCinemaSubtitleId);
  take("ReelNumber", s.DCinemaReelNumber);
  take("EditRate", s.DCinemaEditRate);
  take("TimeCodeRate", s.DCinemaTimeCodeRate);
  // The usual "24 1" is none of these, and 25 gives 24 too, on purpose.
  if (s.DCinemaEditRate == u"24" || s.DCinemaEditRate == u"25") s.FrameRate = 24.0;
  take("StartTime", s.DCinemaStartTime);
  take("Language", s.DCinemaLanguage);
  take("ContentTitleText", s.DCinemaMovieTitle);
  take("IssueDate", s.DCinemaIssueDate);
  take("LoadFont", s.DCinemaFontUri);

  const XMLElement* font = FindFont(root);
  if (!font) return;
  if (const auto id = attribute(*font, "ID")) s.DCinemaFontId = *id;
  if (const auto size = attribute(*font, "Size")) s.DCinemaFontSize = wideToInt(*size);
  if (const auto color = attribute(*font, "Color")) s.DCinemaFontColor = parseHexColor(u"#" + *color);
  if (const auto effect = attribute(*font, "Effect")) s.DCinemaEffect = *effect;
  if (const auto color = attribute(*font, "EffectColor")) s.DCinemaEffectColor = parseHexColor(u"#" + *color);
}

/// Nothing if a time is missing or can't be read.
std::optional<Paragraph> DCinemaSmpte::ParagraphOf(const XMLElement& element) const {
  const std::optional<TimeCode> start = textToTimeCode(attributeOrEmpty(element, "TimeIn"));
  const std::optional<TimeCode> end = textToTimeCode(attributeOrEmpty(element, "TimeOut"));
  if (!start || !end) return std::nullopt;
  WString text = textOf(element);
  const XMLElement* parent = element.Parent()->ToElement();
  if (isNamed(parent, "Font") && isItalic(*parent) && findText(text, u"<i>") == WString::npos) makeItalic(text);
  return Paragraph(*start, *end, std::move(text));
}

void DCinemaSmpte::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  WString text = replaceAll(joinedText(lines), namespaceAttribute(year_), u"");
  replaceAllInPlace(text, u"</dcst:", u"</");
  replaceAllInPlace(text, u"<dcst:", u"<");
  const TiXMLDocument document(text);
  const XMLElement* root = document.RootElement();
  LoadSettings(root);
  for (const XMLElement* element : FindSubtitles(root)) {
    if (std::optional<Paragraph> paragraph = ParagraphOf(*element)) {
      subtitle.Append(std::move(*paragraph));
    } else {
      ++ErrorCount;
    }
  }
  if (!subtitle.Paragraphs.empty()) subtitle.Header = declarationAndRootXml(document);
  subtitle.Renumber(1);
}

}  // namespace mova
