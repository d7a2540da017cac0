#include "formats/xml/TimedTextNodes.h"

#include <cstring>
#include <optional>

#include "text/Strings.h"

namespace mova {
namespace {

/// The colour of "<font …", or nothing if there is none.
std::optional<WString> colorOf(WStringView tag) {
  constexpr WStringView attributeName = u" color=";
  const size_t color = tag.find(attributeName);
  if (color == WStringView::npos) return std::nullopt;
  const std::vector<WStringView> pieces = splitViews(trimView(tag.substr(color + attributeName.size())), u" ", true);
  if (pieces.empty()) return std::nullopt;
  return trim(trimView(trimView(pieces.front(), u'\''), u'"'), u'\'');
}

/// Writes one line of a text into a "p".
class LineWriter {
 public:
  LineWriter(XMLElement& p, bool boldIsStacked) : p_(p), document_(*p.GetDocument()), boldIsStacked_(boldIsStacked) {}

  void Write(WStringView line) {
    copyable_ = 20000 + 8 * line.size();
    Continue(document_.NewText(""));
    for (size_t i = 0; i < line.size();) i += WriteNext(line.substr(i));
    Flush();
  }

 private:
  /// Answers how many units of the line are done with.
  size_t WriteNext(WStringView rest) {
    if (rest.front() == u'<') {
      if (rest.starts_with(u"<i>")) {
        OpenSpan("tts:fontStyle", u"italic", true);
        return 3;
      }
      if (rest.starts_with(u"<b>")) {
        OpenSpan("tts:fontWeight", u"bold", boldIsStacked_);
        return 3;
      }
      if (rest.starts_with(u"<font ")) {
        const size_t end = rest.find(u'>');
        if (end == WStringView::npos) return rest.size();  // The rest of the line goes.
        if (const auto color = colorOf(rest.substr(0, end))) OpenSpan("tts:color", *color, false);
        return end + 1;
      }
      for (WStringView closing : {u"</i>", u"</b>", u"</font>"}) {
        if (!rest.starts_with(closing)) continue;
        CloseSpan();
        return closing.size();
      }
    }
    pending_ += rest.front();
    return 1;
  }

  void OpenSpan(const char* attributeName, WStringView value, bool stacked) {
    Flush();
    if (stacked) stack_.push_back(current_);
    XMLElement* span = document_.NewElement("span");
    setAttribute(*span, attributeName, value);
    Continue(span);
  }

  void CloseSpan() {
    Flush();
    XMLNode* next = nullptr;
    if (stack_.empty()) {
      next = document_.NewText("");
    } else {
      next = CopyOf(*stack_.back());
      stack_.pop_back();
    }
    Continue(next);
  }

  /// The node without its value. Attributes and characters are copied as long as the copies of a line don't multiply
  /// these beyond all bounds.
  XMLNode* CopyOf(const XMLNode& node) {
    const XMLElement* span = node.ToElement();
    if (!span) return document_.NewText("");
    size_t size = 0;
    if (const XMLAttribute* attribute = span->FirstAttribute()) size += std::strlen(attribute->Value());
    if (const XMLNode* characters = span->FirstChild()) size += std::strlen(characters->Value());
    if (size > copyable_) return document_.NewElement("");
    copyable_ -= size;
    XMLNode* copy = span->DeepClone(&document_);
    copy->SetValue("");
    return copy;
  }

  void Continue(XMLNode* node) { current_ = p_.InsertEndChild(node); }

  /// Gives the current node the characters that have been met.
  void Flush() {
    if (pending_.empty()) return;
    XMLNode* target = current_->ToText() ? current_ : current_->LastChild();
    if (!target) target = current_->InsertEndChild(document_.NewText(""));
    target->SetValue((target->Value() + toUtf8(pending_)).c_str());
    pending_.clear();
  }

  XMLElement& p_;
  tinyxml2::XMLDocument& document_;
  bool boldIsStacked_;
  XMLNode* current_ = nullptr;
  std::vector<XMLNode*> stack_;
  WString pending_;
  size_t copyable_ = 0;  ///< bytes
};

}  // namespace

void appendTextLines(XMLElement& p, WStringView text, bool boldIsStacked) {
  // An empty text gives no line, and a text of line ends alone an empty one.
  bool isFirst = true;
  for (WStringView line : splitViews(text, u"\r\n", true)) {
    if (!isFirst) p.InsertNewChildElement("br");
    isFirst = false;
    LineWriter(p, boldIsStacked).Write(line);
  }
}

void dropNamespaceLeftovers(WString& text) {
  replaceAllInPlace(text, u" xmlns=\"\"", u"");
  replaceAllInPlace(text, u" xmlns:tts=\"http://www.w3.org/ns/10/ttml#style\">", u">");
}

std::vector<WString> getStyleIdsFromHeader(WStringView header) {
  std::vector<WString> ids;
  if (header.empty()) return ids;
  const TiXMLDocument document(header);
  const XMLNode* head = findNodeDeep(&document, "head");
  if (!head) head = findNodeDeep(&document, "ttml:head");
  std::vector<const XMLElement*> styles = collectElementsDeep(head, "style");
  if (styles.empty()) styles = collectElementsDeep(head, "ttml:style");
  for (const XMLElement* style : styles) {
    std::optional<WString> id = attribute(*style, "xml:id");
    if (!id) id = attribute(*style, "id");
    if (id) ids.push_back(*id);
  }
  return ids;
}

}  // namespace mova
