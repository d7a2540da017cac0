#include "formats/xml/FinalCutProXml.h"

#include <array>
#include <map>
#include <optional>

#include "model/Arithmetic.h"
#include "model/GlobalSettings.h"
#include "movautil/MovaUtil.h"
#include "text/Markup.h"
#include "text/Strings.h"
#include "xml/TiXMLDocument.h"

namespace mova {
namespace {

constexpr WStringView sequenceTemplate =
    uR"(<?xml version="1.0" encoding="utf-8" ?>
<xmeml version="5">
<sequence id="X">
    <uuid>5B3B0C07-9A9D-42AA-872C-C953923F97D8</uuid><updatebehavior>add</updatebehavior>
<name>X</name>
<duration>[duration]</duration>
<rate>
<ntsc>[ntsc]</ntsc>
<timebase>[timebase]</timebase>
</rate>
<timecode>
<rate>
<ntsc>[ntsc]</ntsc>
<timebase>[timebase]</timebase>
</rate>
<string>00:00:00:00</string>
<frame>0</frame>
<source>source</source>
<displayformat>NDF</displayformat>
</timecode>
<in>0</in>
<out>[duration]</out>
<media>
<video>
<format>
<samplecharacteristics>
<width>1920</width>
<height>1080</height>
<anamorphic>FALSE</anamorphic>
<pixelaspectratio>Square</pixelaspectratio>
<fielddominance>none</fielddominance>
<rate>
<ntsc>[ntsc]</ntsc>
<timebase>[timebase]</timebase>
</rate>
<colordepth>24</colordepth>
<codec>
<name>Apple ProRes 422</name>
<appspecificdata>
<appname>Final Cut Pro</appname>
<appmanufacturer>Apple Inc.</appmanufacturer>
<appversion>7.0</appversion>
<data>
<qtcodec>
<codecname>Apple ProRes 422</codecname>
<codectypename>Apple ProRes 422 (HQ)</codectypename>
<codectypecode>apch</codectypecode>
<codecvendorcode>appl</codecvendorcode>
<spatialquality>1024</spatialquality>
<temporalquality>0</temporalquality>
<keyframerate>0</keyframerate>
<datarate>0</datarate>
</qtcodec>
</data>
</appspecificdata>
</codec>
</samplecharacteristics>
<appspecificdata>
<appname>Final Cut Pro</appname>
<appmanufacturer>Apple Inc.</appmanufacturer>
<appversion>7.0</appversion>
<data>
<fcpimageprocessing>
<useyuv>TRUE</useyuv>
<usesuperwhite>FALSE</usesuperwhite>
<rendermode>Float10BPP</rendermode>
</fcpimageprocessing>
</data>
</appspecificdata>
</format>
<track>
</track>
</video>
</media>
</sequence>
</xmeml>)";

constexpr WStringView itemTemplate =
    uR"(          <generatoritem id='Outline Text[NUMBER]'><name>Outline Text</name>
<duration>3000</duration>
<rate>
<ntsc>[ntsc]</ntsc>
<timebase>[timebase]</timebase>
</rate>
<in>1380</in>
<out>1474</out>
<start>8228</start>
<end>8322</end>
<enabled>TRUE</enabled>
<anamorphic>FALSE</anamorphic>
<alphatype>black</alphatype>
<masterclipid>Outline Text1</masterclipid>
<effect>
<name>Outline Text</name>
<effectid>Outline Text</effectid>
<effectcategory>Text</effectcategory>
<effecttype>generator</effecttype>
<mediatype>video</mediatype>
<parameter>
<parameterid>part1</parameterid>
<name>Text Settings</name>
<value/>
</parameter>
<parameter>
<parameterid>str</parameterid>
<name>Text</name>
<value>[TEXT]</value>
</parameter>
<parameter>
<parameterid>font</parameterid>
<name>Font</name>
<value>[FONTNAME]</value>
</parameter>
<parameter>
<parameterid>style</parameterid>
<name>Style</name>
<valuemin>1</valuemin>
<valuemax>4</valuemax>
<valuelist>
<valueentry>
<name>Plain</name>
<value>1</value>
</valueentry>
<valueentry>
<name>Bold</name>
<value>2</value>
</valueentry>
<valueentry>
<name>Italic</name>
<value>3</value>
</valueentry>
<valueentry>
<name>Bold/Italic</name>
<value>4</value>
</valueentry>
</valuelist>
<value>[FONTSTYLE]</value>
</parameter>
<parameter>
<parameterid>align</parameterid>
<name>Alignment</name>
<valuemin>1</valuemin>
<valuemax>3</valuemax>
<valuelist>
<valueentry>
<name>Left</name>
<value>1</value>
</valueentry>
<valueentry>
<name>Center</name>
<value>2</value>
</valueentry>
<valueentry>
<name>Right</name>
<value>3</value>
</valueentry>
</valuelist>
<value>2</value>
</parameter>
<parameter>
<parameterid>size</parameterid>
<name>Size</name>
<valuemin>0</valuemin>
<valuemax>200</valuemax>
<value>[FONTSIZE]</value>
</parameter>
<parameter>
<parameterid>track</parameterid>
<name>Tracking</name>
<valuemin>0</valuemin>
<valuemax>100</valuemax>
<value>1</value>
</parameter>
<parameter>
<parameterid>lead</parameterid>
<name>Leading</name>
<valuemin>-100</valuemin>
<valuemax>100</valuemax>
<value>0</value>
</parameter>
<parameter>
<parameterid>aspect</parameterid>
<name>Aspect</name>
<valuemin>0</valuemin>
<valuemax>4</valuemax>
<value>1</value>
</parameter>
<parameter>
<parameterid>linewidth</parameterid>
<name>Line Width</name>
<valuemin>0</valuemin>
<valuemax>200</valuemax>
<value>20</value>
</parameter>
<parameter>
<parameterid>linesoft</parameterid>
<name>Line Softness</name>
<valuemin>0</valuemin>
<valuemax>100</valuemax>
<value>5</value>
</parameter>
<parameter>
<parameterid>textopacity</parameterid>
<name>Text Opacity</name>
<valuemin>0</valuemin>
<valuemax>100</valuemax>
<value>100</value>
</parameter>
<parameter>
<parameterid>center</parameterid>
<name>Center</name>
<value>
<horiz>0.00833333</horiz>
<vert>0.390741</vert>
</value>
</parameter>
<parameter>
<parameterid>textcolor</parameterid>
<name>Text Color</name>
<value>
<alpha>255</alpha>
<red>255</red>
<green>255</green>
<blue>255</blue>
</value>
</parameter>
<parameter>
<parameterid>supertext</parameterid>
<name>Text Graphic</name>
</parameter>
<parameter>
<parameterid>linecolor</parameterid>
<name>Line Color</name>
<value>
<alpha>255</alpha>
<red>0</red>
<green>0</green>
<blue>0</blue>
</value>
</parameter>
<parameter>
<parameterid>part2</parameterid>
<name>Background Settings</name>
<value/>
</parameter>
<parameter>
<parameterid>xscale</parameterid>
<name>Horizontal Size</name>
<valuemin>0</valuemin>
<valuemax>200</valuemax>
<value>0</value>
</parameter>
<parameter>
<parameterid>yscale</parameterid>
<name>Vertical Size</name>
<valuemin>0</valuemin>
<valuemax>200</valuemax>
<value>0</value>
</parameter>
<parameter>
<parameterid>xoffset</parameterid>
<name>Horizontal Offset</name>
<valuemin>-100</valuemin>
<valuemax>100</valuemax>
<value>0</value>
</parameter>
<parameter>
<parameterid>yoffset</parameterid>
<name>Vertical Offset</name>
<valuemin>-100</valuemin>
<valuemax>100</valuemax>
<value>0</value>
</parameter>
<parameter>
<parameterid>backcolor</parameterid>
<name>Back Color</name>
<value>
<alpha>255</alpha>
<red>255</red>
<green>255</green>
<blue>255</blue>
</value>
</parameter>
<parameter>
<parameterid>superback</parameterid>
<name>Back Graphic</name>
</parameter>
<parameter>
<parameterid>crop</parameterid>
<name>Crop</name>
<value>FALSE</value>
</parameter>
<parameter>
<parameterid>autokern</parameterid>
<name>Auto Kerning</name>
<value>TRUE</value>
</parameter>
</effect>
<sourcetrack>
<mediatype>video</mediatype>
</sourcetrack>
</generatoritem>)";

/// Where the track of the sequence lies, and nothing else.
constexpr WStringView trackPath = u"<xmeml><sequence><media><video><track/></video></media></sequence></xmeml>";

/// Stands for a line break until the text is printed; no printer would let "&#13;" through.
constexpr WStringView lineBreakMark = u"_____@___";

WString framesOf(TimeCode timeCode) {
  const double frames = timeCode.TotalMilliseconds / 1000.0 * GlobalSettings.FrameRate;
  return intToWStr(lowInt32(rounded(frames)), u"%d");
}

WString withRates(WStringView text) {
  WString filled(text);
  replaceAllInPlace(filled, u"[ntsc]", fcpNtsc());
  replaceAllInPlace(filled, u"[timebase]", fcpTimebase());
  return filled;
}

WString sequenceText(const Subtitle& subtitle) {
  const TimeCode end = subtitle.Paragraphs.empty() ? TimeCode{0} : subtitle.Paragraphs.back()->EndTime;
  WString text = withRates(sequenceTemplate);
  return replaceAllInPlace(text, u"[duration]", framesOf(end));
}

/// The identifier of the sequence that the header holds, or a new one.
WString sequenceUuid(const Subtitle& subtitle) {
  WString uuid = wStrToUpper(newGuid());
  if (subtitle.Header.empty()) return uuid;
  const TiXMLDocument header(subtitle.Header);
  const XMLElement* kept = elementAtPath(header.RootElement(), "sequence/uuid");
  return kept ? elementInnerText(*kept) : uuid;
}

/// Which entry of the style list: 1 Plain, 3 Italic, 4 Bold/Italic. Bold alone counts as plain, on purpose.
int32_t styleOf(WStringView captionText) {
  const WString text = trim(removeTagsNamed(captionText, {u"font"}));
  const bool isBoldItalic = (text.starts_with(u"<i><b>") && text.ends_with(u"</b></i>")) ||
                            (text.starts_with(u"<b><i>") && text.ends_with(u"</i></b>"));
  if (isBoldItalic) return 4;
  return text.starts_with(u"<i>") && text.ends_with(u"</i>") ? 3 : 1;
}

/// The last step of writing. It may be done piece by piece, where no piece ends within one of the texts.
WString& rewrite(WString& text) {
  replaceAllInPlace(text, u"xmeml[]", u"xmeml");
  return replaceAllInPlace(text, lineBreakMark, u"&#13;");
}

/// What a generator item says of its caption.
struct Item {
  int32_t style;
  WString number;
  WString start;
  WString end;
  WString text;
  WString MarkedText() const { return replaceAll(text, u"\r\n", lineBreakMark); }
};

WString itemMarkup(const Item& item) {
  WString markup = withRates(itemTemplate);
  replaceAllInPlace(markup, u"[NUMBER]", item.number);
  replaceAllInPlace(markup, u"[FONTSTYLE]", intToWStr(item.style, u"%d"));
  replaceAllInPlace(markup, u"[FONTSIZE]", intToWStr(GlobalSettings.FcpFontSize, u"%d"));
  replaceAllInPlace(markup, u"[FONTNAME]", GlobalSettings.FcpFontName);
  return replaceAllInPlace(markup, u"[NUMBER]", item.number);  // again, for a font whose name holds it
}

/// The item as it is printed in a sequence, from the end of the line before to the indent of the line behind. Empty
/// where the font's name breaks the markup.
WString printedItem(const Item& item) {
  TiXMLDocument document(trackPath);
  XMLElement* track = findElementDeep(document.RootElement(), "track");
  appendXmlFragment(*track, itemMarkup(item));
  XMLElement* element = track->FirstChildElement();
  if (!element) return {};
  setText(*findElementDeep(element, "start"), item.start);
  setText(*findElementDeep(element, "end"), item.end);
  // The first value is that of the parameter "part1", on purpose; the text parameter keeps "[TEXT]".
  XMLElement* value = findElementDeep(element, "value");
  setText(*value, item.text);
  appendXmlFragment(*value, item.MarkedText());

  WString text = documentToText(document);
  text.resize(text.rfind(u"</track>"));
  constexpr WStringView trackTag = u"<track>";
  text.erase(0, text.find(trackTag) + trackTag.size());
  return rewrite(text);
}

/// The text as it is printed when it is an element's only child.
WString printedText(WStringView text) {
  TiXMLDocument document(u"<x/>");
  setText(*document.RootElement(), text);
  const WString printed = documentToText(document);
  WString inner = printed.substr(3, printed.size() - 7);  // without "<x>" and "</x>"
  return rewrite(inner);
}

/// Whether the text parses to an element, which is then printed a second time behind it, on purpose.
bool holdsElement(WStringView text) {
  return text.find(u'<') != WStringView::npos && TiXMLDocument(text).FirstChildElement();
}

/// Prints items that differ in number, times and text only: an item is long, and most of it is always the same.
class ItemPrinter {
 public:
  explicit ItemPrinter(int32_t style) : text_(printedItem({style, u"", u"", u"", u""})) {
    if (text_.empty()) return;
    // All four come before anything that the settings put in.
    size_t position = 0;
    for (size_t i = 0; i < places_.size(); ++i) {
      constexpr WStringView before[] = {u"\"Outline Text", u"<start>", u"<end>", u"<value>"};
      position = text_.find(before[i], position) + before[i].size();
      places_[i] = position;
    }
  }

  /// About the length of an item with a short text.
  size_t Size() const { return text_.size() + 128; }

  void AppendTo(WString& out, const Item& item) const {
    if (text_.empty()) return;
    const WString contents[] = {item.number, item.start, item.end, printedText(item.MarkedText())};
    size_t position = 0;
    for (size_t i = 0; i < places_.size(); ++i) {
      out.append(text_, position, places_[i] - position);
      out += contents[i];
      position = places_[i];
    }
    out.append(text_, position);
  }

 private:
  WString text_;  ///< With nothing where the contents go.
  std::array<size_t, 4> places_{};
};

/// Appends what stands between the tags of the track.
void appendItems(WString& out, const Subtitle& subtitle) {
  const bool fontHoldsNumber = GlobalSettings.FcpFontName.find(u"[NUMBER]") != WString::npos;
  std::map<int32_t, ItemPrinter> printers;
  const ItemPrinter& plain = printers.try_emplace(1, 1).first->second;
  out.reserve(out.size() + plain.Size() * subtitle.Paragraphs.size());  // Growing step by step would copy gigabytes.
  int32_t number = 0;
  for (const auto& paragraph : subtitle.Paragraphs) {
    const Item item = {styleOf(paragraph->Text), intToWStr(++number, u"%d"), framesOf(paragraph->StartTime),
                       framesOf(paragraph->EndTime), removeHtmlTags(cText(paragraph->Text))};
    out.resize(trimEndView(out).size());  // without the line break and indent behind the item before
    if (fontHoldsNumber || holdsElement(item.MarkedText())) {
      out += printedItem(item);
    } else {
      printers.try_emplace(item.style, item.style).first->second.AppendTo(out, item);
    }
  }
}

/// The whole part of the rate that the first "timebase" below the first "rate" states, if there is one.
std::optional<int32_t> statedRate(const XMLElement* rate) {
  const XMLElement* timebase = findElementDeep(rate, "timebase");
  return timebase ? std::optional(cutToInt32(wideToDouble(elementInnerText(*timebase)))) : std::nullopt;
}

/// A child element with a value, of the parameters that bear the identifier.
template <typename Use>
void forEachValue(const std::vector<const XMLElement*>& parameters, WStringView id, Use use) {
  for (const XMLElement* parameter : parameters) {
    const XMLElement* parameterId = parameter->FirstChildElement("parameterid");
    const XMLElement* value = parameter->FirstChildElement("value");
    if (parameterId && value && elementInnerText(*parameterId) == id) use(*parameter, elementInnerText(*value));
  }
}

struct Style {
  bool bold = false;
  bool italic = false;
};

/// What the entry of the parameter's list says that the value, counted from 1, stands for.
void readStyle(const XMLElement& parameter, WStringView value, Style& style) {
  if (!isAllDigits(value)) return;
  const auto entries = elementsAtPath(&parameter, "valuelist/valueentry");
  const int32_t index = wideToInt(value);
  if (index < 1 || static_cast<size_t>(index) > entries.size()) return;
  const XMLElement* nameElement = entries[index - 1]->FirstChildElement("name");
  if (!nameElement) return;
  const WString name = trim(wStrToLower(elementInnerText(*nameElement)));
  if (name == u"italic" || name == u"bold/italic") style.italic = true;
  if (name == u"bold" || name == u"bold/italic") style.bold = true;
}

WString textOf(const std::vector<const XMLElement*>& parameters) {
  WString text;
  for (WStringView id : {u"str", u"str1", u"str2", u"sourcetext", u"text"}) {
    if (!text.empty()) break;
    forEachValue(parameters, id, [&](const XMLElement&, const WString& value) { text += value; });
  }
  Style style;
  for (WStringView id : {u"style", u"fontstyle"}) {
    forEachValue(parameters, id,
                 [&](const XMLElement& parameter, const WString& value) { readStyle(parameter, value, style); });
  }
  if (findText(text, u"\r\n") == WString::npos) replaceAllInPlace(text, u"\r", u"\r\n");
  if (style.bold) text = u"<b>" + text + u"</b>";
  if (style.italic) text = u"<i>" + text + u"</i>";
  return text;
}

double frameOf(const XMLElement& element) {
  return wideToDouble(elementInnerText(element));
}

}  // namespace

WString fcpTimebase() {
  const double rate = GlobalSettings.FrameRate;
  if (rate <= 24.0) return u"24";
  if (rate < 29.0) return u"25";
  if (rate <= 30.0) return u"30";
  if (rate <= 50.0) return u"50";
  return u"60";
}

WString fcpNtsc() {
  const double rate = GlobalSettings.FrameRate;
  return rate >= 24.0 && rate < 25.0 ? u"FALSE" : u"TRUE";
}

bool FinalCutProXml::Recognizes(const Lines& lines, const WString& fileName) {
  return LoadsAny(lines, fileName);
}

WString FinalCutProXml::WriteText(const Subtitle& subtitle, const WString& givenTitle) {
  const WString title = givenTitle.empty() ? WString(u"Caption Forge subtitle") : givenTitle;
  TiXMLDocument document(sequenceText(subtitle));
  XMLElement* sequence = findElementDeep(document.RootElement(), "sequence");
  setAttribute(*sequence, "id", title);
  setText(*elementAtPath(sequence, "name"), title);
  setText(*elementAtPath(sequence, "uuid"), sequenceUuid(subtitle));

  WString text = documentToText(document);
  rewrite(text);
  constexpr WStringView emptyTrack = u"<track/>";
  const size_t track = text.rfind(emptyTrack);  // the last one: the title may hold anything
  const WString tail = text.substr(track + emptyTrack.size());
  text.replace(track, WString::npos, u"<track>");
  const size_t begin = text.size();
  appendItems(text, subtitle);
  if (text.size() > begin) {
    text += u"</track>";
  } else {
    text.replace(track, WString::npos, emptyTrack);
  }
  text += tail;
  return text;
}

void FinalCutProXml::LoadSubtitle(Subtitle& subtitle, const Lines& lines, const WString&) {
  ErrorCount = 0;
  const TiXMLDocument* document = parsedXml(lines);
  const XMLElement* root = document ? document->RootElement() : nullptr;
  if (!root) {
    ErrorCount = 1;
    return;
  }
  int32_t rate = statedRate(elementAtPath(root, "sequence/rate")).value_or(cutToInt32(GlobalSettings.FrameRate));
  for (const XMLElement* track : elementsAtPath(root, "xmeml/sequence/media/video/track")) {
    for (const XMLElement* item : collectElementsDeep(track, "generatoritem")) {
      rate = statedRate(findElementDeep(item, "rate")).value_or(rate);
      const XMLElement* start = findElementDeep(item, "start");
      const XMLElement* end = findElementDeep(item, "end");
      if (!start || !end) {
        ++ErrorCount;
        continue;
      }
      subtitle.Append(Paragraph(textOf(elementsAtPath(item, "effect/parameter")), frameOf(*start) / rate * 1000.0,
                                frameOf(*end) / rate * 1000.0));
    }
  }
  subtitle.Renumber(1);
  if (!subtitle.Paragraphs.empty()) {  // A file without any is not taken, and large documents have large headers.
    subtitle.Header = declarationAndRootXml(*document, elementAtPath(root, "sequence/media/video/track"));
  }
  GlobalSettings.FrameRate = rate;
}

}  // namespace mova
