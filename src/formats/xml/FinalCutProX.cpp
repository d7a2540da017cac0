#include "formats/xml/FinalCutProX.h"

#include "model/Arithmetic.h"
#include "movautil/MovaUtil.h"
#include "text/Markup.h"
#include "text/Strings.h"

namespace mova {
namespace {

constexpr WStringView projectTemplate =
    uR"(<?xml version="1.0" encoding="utf-8" standalone="no"?>
<!DOCTYPE fcpxml>
<fcpxml version="[version]">
  <project name="Caption Forge subtitle" uid="C1E80D31-57D4-4E6C-84F6-86A75DCB7A54" eventID="B5C98F73-1D7E-4205-AEF3-1485842EB191" location="file://localhost/Volumes/Macintosh%20HD/Final%20Cut%20Projects/Sample%20Event/Sample%20Project/" >
    <resources>
      <format id="r1" name="FFVideoFormatDV720x480i5994" frameDuration="2002/60000s" fieldOrder="lower first" width="720" height="480" paspH="10" paspV="11"/>
      <effect id="r6" name="Custom" uid=".../Titles.localized/Build In:Out.localized/Custom.localized/Custom.moti"/>
    </resources>
    <sequence duration="10282752480/2400000s" format="r1" tcStart="0s" tcFormat="NDF" audioLayout="stereo" audioRate="48k">
      <spine>
[spine]
      </spine>
    </sequence>
  </project>
</fcpxml>)";

constexpr WStringView titleTemplate =
    uR"(<title lane="6" offset="4130126/60000s" ref="[ref]" name="" duration="288288/60000s" start="216003788/60000s" role="Subtitles">
  <adjust-transform position="0.267518 -32.3158"/>
  <text></text>
</title>)";

}  // namespace

WString finalCutProject(WStringView version, WStringView spine) {
  return replaceAll(replaceAll(projectTemplate, u"[version]", version), u"[spine]", spine);
}

WString finalCutTitle(WStringView reference) {
  return replaceAll(titleTemplate, u"[ref]", reference);
}

void fillTitle(XMLElement& title, const Paragraph& paragraph) {
  const double start = paragraph.StartTime.TotalMilliseconds;
  const WString plainText = removeHtmlTags(paragraph.Text);
  const WString offset = ticks(start, 60000);
  setAttribute(title, "offset", offset);
  setAttribute(title, "name", plainText);
  setAttribute(title, "duration", ticks(paragraph.EndTime.TotalMilliseconds - start, 60000));
  setAttribute(title, "start", offset);
  setText(*title.FirstChildElement("text"), plainText);
}

WString projectText(TiXMLDocument& document, const XMLElement* parent, const Subtitle& subtitle,
                    const std::function<XMLElement*(const Paragraph&)>& newChild) {
  DocumentStream stream = streamOf(document, parent, subtitle.Paragraphs.size(),
                                   [&](size_t i) { return newChild(*subtitle.Paragraphs[i]); });
  stream.rewrite = [](WString& text) {
    replaceAllInPlace(text, u"fcpxml[]", u"fcpxml");
    replaceAllInPlace(text, u"fcpxml []", u"fcpxml");
  };
  return documentToText(document, stream);
}

WString ticks(double milliseconds, int32_t base) {
  const WString count = longLongToWStr(cutToInt64(milliseconds / 1000.0 * base), u"%I64d");
  return count + u'/' + intToWStr(base, u"%d") + u's';
}

double timeFromRational(WStringView text) {
  const std::vector<WStringView> pieces = splitViews(trimEndView(text, u's'), u"/", false);
  if (pieces.size() == 1) return wideToDouble(pieces[0]) * 1000.0;
  if (pieces.size() == 2) return wideToDouble(pieces[0]) / wideToDouble(pieces[1]) * 1000.0;
  return 0;
}

}  // namespace mova
