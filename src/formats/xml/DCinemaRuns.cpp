#include "formats/xml/DCinemaRuns.h"

#include <utility>

#include "movautil/MovaUtil.h"
#include "text/Markup.h"
#include "text/Strings.h"
#include "xml/TiXMLDocument.h"

namespace mova {
namespace {

constexpr WStringView openItalic = u"<i>";
constexpr WStringView closeItalic = u"</i>";
constexpr WStringView openFont = u"<font color=";
constexpr WStringView closeFont = u"</font>";
constexpr WStringView italicAttribute = u" Italic=\"yes\"";

/// The colour of a reel for the value of a font tag. "#ff0000" gets fourteen digits, on purpose.
WString reelColor(WStringView value) {
  const WStringView color = trimView(trimView(trimView(value, u'"'), u'\''));
  if (!color.starts_with(u'#')) return WString(color);
  return u"FFFFFFFF" + wStrToUpper(trimStart(color, u'#'));
}

}  // namespace

WString DCinemaRuns::MarkupOf(WStringView line) {
  result_.clear();
  pending_.clear();
  const size_t lastClosing = line.rfind(u'>');
  for (size_t i = 0; i < line.size();) {
    const WStringView rest = line.substr(i);
    if (!italic_ && rest.starts_with(openItalic)) {
      FlushPlain();
      italic_ = true;
      i += openItalic.size();
    } else if (italic_ && rest.starts_with(closeItalic)) {
      i += CloseItalic(rest);
    } else if (rest.starts_with(openFont) && lastClosing != WStringView::npos && lastClosing > i) {
      i += OpenFont(rest);
    } else if (fontDepth_ > 0 && rest.starts_with(closeFont)) {
      i += CloseFont(rest);
    } else {
      pending_ += rest.front();
      ++i;
    }
  }
  FinishLine();
  return std::move(result_);
}

void DCinemaRuns::FlushPlain() {
  result_ += pending_;
  pending_.clear();
}

void DCinemaRuns::CloseRun(WStringView attributes) {
  result_ += u"<dcst:Font";
  result_ += attributes;
  result_ += u'>';
  result_ += cText(removeHtmlTags(pending_));
  result_ += u"</dcst:Font>";
  pending_.clear();
}

/// Nothing when no colour is open.
WString DCinemaRuns::ColorAttribute() const {
  return colors_.empty() ? WString() : u" Color=\"" + WString(cText(colors_.back())) + u"\"";
}

void DCinemaRuns::PopColor() {
  if (!colors_.empty()) colors_.pop_back();
}

size_t DCinemaRuns::CloseItalic(WStringView rest) {
  italic_ = false;
  if (pending_.empty()) return closeItalic.size();
  if (!rest.substr(closeItalic.size()).starts_with(closeFont)) {
    CloseRun(italicAttribute);
    return closeItalic.size();
  }
  CloseRun(WString(italicAttribute) + ColorAttribute());
  PopColor();
  --fontDepth_;
  return closeItalic.size() + closeFont.size();
}

size_t DCinemaRuns::OpenFont(WStringView rest) {
  FlushPlain();
  const size_t end = rest.find(u'>');
  colors_.push_back(reelColor(rest.substr(openFont.size(), end - openFont.size())));
  ++fontDepth_;
  return end + 1;
}

size_t DCinemaRuns::CloseFont(WStringView rest) {
  --fontDepth_;
  if (pending_.empty()) return closeFont.size();  // Its colour stays, on purpose.
  WString attributes = ColorAttribute();
  PopColor();
  const bool closesItalic = rest.substr(closeFont.size()).starts_with(closeItalic);
  if (closesItalic) {
    attributes += italicAttribute;
    italic_ = false;
  }
  CloseRun(attributes);
  return closeFont.size() + (closesItalic ? closeItalic.size() : 0);
}

/// Closes the run that is open at the end of the line; its tags stay open.
void DCinemaRuns::FinishLine() {
  if (fontDepth_ < 1 && !italic_) {
    FlushPlain();
  } else if (!pending_.empty()) {
    WString attributes = fontDepth_ < 1 ? WString() : ColorAttribute();
    if (italic_) attributes += italicAttribute;
    CloseRun(attributes);
  } else if (fontDepth_ > 0 && result_.starts_with(u"<dcst:Font ")) {
    RecolorFirstRun();
  }
}

/// Gives the first run the colour that is open, and drops what follows it, on purpose.
void DCinemaRuns::RecolorFirstRun() {
  TiXMLDocument fragment(u"<root>" + replaceAll(result_, u"dcst:Font", u"Font") + u"</root>");
  XMLElement* run = findElementDeep(fragment.RootElement(), "Font");
  if (!run) return;
  const WString text = elementInnerText(*run);
  run->SetName("dcst:Font");
  run->DeleteChildren();
  setText(*run, text);
  setAttribute(*run, "Color", colors_.back());
  result_ = elementOuterXml(*run);
}

}  // namespace mova
