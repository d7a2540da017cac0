#include "xml/TiXMLDocument.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

#include "movautil/MovaUtil.h"
#include "text/Strings.h"

namespace mova {
namespace {

// --- Parsing.

constexpr bool isNameStart(char16_t unit) {
  return unit >= 0x80 || (unit >= u'a' && unit <= u'z') || isUpper(unit) || unit == u':' || unit == u'_';
}

/// Whether any tag has more than `limit` attributes. Reads tags as the library does, and each attribute has one value
/// in quotes.
bool hasMoreAttributesThan(std::string_view text, int limit) {
  size_t position = 0;
  const auto skipBehind = [&](std::string_view opening, std::string_view closing) {
    if (text.compare(position, opening.size(), opening) != 0) return false;
    const size_t end = text.find(closing, position + opening.size());
    position = end == std::string_view::npos ? text.size() : end + closing.size();
    return true;
  };
  while ((position = text.find('<', position)) != std::string_view::npos) {
    if (skipBehind("<?", "?>") || skipBehind("<!--", "-->") || skipBehind("<![CDATA[", "]]>") ||
        skipBehind("<!", ">")) {
      continue;
    }
    int values = 0;
    for (++position; position < text.size() && text[position] != '>'; ++position) {
      const char unit = text[position];
      if (unit != '"' && unit != '\'') continue;
      if (++values > limit) return true;
      position = text.find(unit, position + 1);
      if (position == std::string_view::npos) return false;
    }
  }
  return false;
}

void appendCharacter(std::string& out, uint32_t character) {
  if (character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF)) character = 0xFFFD;
  const auto append = [&out](uint32_t byte) { out += static_cast<char>(byte); };
  const auto appendLowBits = [&](int shift) { append(0x80 | (character >> shift & 0x3F)); };
  if (character < 0x80) return append(character);
  if (character < 0x800) {
    append(0xC0 | character >> 6);
  } else if (character < 0x10000) {
    append(0xE0 | character >> 12);
    appendLowBits(6);
  } else {
    append(0xF0 | character >> 18);
    appendLowBits(12);
    appendLowBits(6);
  }
  appendLowBits(0);
}

/// Reads "&#N;" or "&#xN;" at the start of the text and appends its character. Gives the length of the reference, or 0
/// if there is none. What is no character becomes U+FFFD.
size_t decodeNumericReference(std::string_view text, std::string& out) {
  if (!text.starts_with("&#")) return 0;
  const bool hexadecimal = text.size() > 2 && text[2] == 'x';
  const size_t firstDigit = hexadecimal ? 3 : 2;
  uint32_t character = 0;
  for (size_t i = firstDigit; i < text.size(); ++i) {
    const char unit = text[i];
    uint32_t digit;
    if (unit >= '0' && unit <= '9') {
      digit = unit - '0';
    } else if (hexadecimal && unit >= 'a' && unit <= 'f') {
      digit = unit - 'a' + 10;
    } else if (hexadecimal && unit >= 'A' && unit <= 'F') {
      digit = unit - 'A' + 10;
    } else if (unit == ';' && i > firstDigit) {
      appendCharacter(out, character);
      return i + 1;
    } else {
      return 0;
    }
    if (character <= 0x10FFFF) character = character * (hexadecimal ? 16 : 10) + digit;
  }
  return 0;
}

size_t decodeNamedEntity(std::string_view text, std::string& out) {
  constexpr struct {
    std::string_view name;
    char value;
  } entities[] = {{"&quot;", '"'}, {"&amp;", '&'}, {"&apos;", '\''}, {"&lt;", '<'}, {"&gt;", '>'}};
  for (const auto& entity : entities) {
    if (!text.starts_with(entity.name)) continue;
    out += entity.value;
    return entity.name.size();
  }
  return 0;
}

std::string decodeEntities(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const size_t ampersand = std::min(text.find('&'), text.size());
    out += text.substr(0, ampersand);
    text.remove_prefix(ampersand);
    if (text.empty()) break;
    size_t length = decodeNamedEntity(text, out);
    if (length == 0) length = decodeNumericReference(text, out);
    if (length == 0) out += text[length++];  // Any other "&" stays as it is.
    text.remove_prefix(length);
  }
  return out;
}

/// The library would keep the white space in front of a text, and it garbles an unknown entity behind a known one. So
/// it is left to parse without entities, and both is done here.
void mendText(XMLText& text) {
  if (text.CData()) return;
  std::string_view value = text.Value();
  const size_t begin = value.find_first_not_of(" \t\n\v\f\r");
  const bool hasEntities = value.find('&') != std::string_view::npos;
  if (begin == 0 && !hasEntities) return;
  value.remove_prefix(std::min(begin, value.size()));
  const std::string mended = hasEntities ? decodeEntities(value) : std::string(value);
  text.SetValue(mended.c_str());
}

void mendAttributes(XMLElement& element) {
  for (const XMLAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
    if (std::strchr(attribute->Value(), '&')) {
      element.SetAttribute(attribute->Name(), decodeEntities(attribute->Value()).c_str());
    }
  }
}

// --- Walking.

/// The node behind `node` in document order, or null if that is not below `top`.
const XMLNode* nextBelow(const XMLNode* node, const XMLNode* top) {
  if (node->FirstChild()) return node->FirstChild();
  for (; node != top; node = node->Parent()) {
    if (node->NextSibling()) return node->NextSibling();
  }
  return nullptr;
}

const XMLNode* firstBelow(const XMLNode* top) {
  return top ? top->FirstChild() : nullptr;
}

bool isElementNamed(const XMLNode* node, const char* name) {
  return node->ToElement() && isNamed(node, name);
}

/// Walks all but the last name of the path and takes that one off it into `last`.
const XMLNode* parentAtPath(const XMLNode* node, std::string_view path, std::string& last) {
  bool isFirst = true;
  while (node) {
    const size_t slash = path.find('/');
    last = path.substr(0, slash);
    // A "/" at the end has no piece behind it.
    const bool isLast = slash == std::string_view::npos || slash + 1 == path.size();
    if (!isLast) path.remove_prefix(slash + 1);
    const bool isOwnName = std::exchange(isFirst, false) && isNamed(node, last.c_str());
    if (isLast) return isOwnName ? nullptr : node;
    if (!isOwnName) node = node->FirstChildElement(last.c_str());
  }
  return nullptr;
}

// --- Markup.

void appendInnerXml(std::string& out, const XMLElement& element, const XMLElement* without);

void appendOuterXml(std::string& out, const XMLElement& element, const XMLElement* without) {
  if (&element == without) return;
  out += '<';
  out += element.Name();
  for (const XMLAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
    out += ' ';
    out += attribute->Name();
    out += "=\"";
    out += attribute->Value();
    out += '"';
  }
  out += '>';
  appendInnerXml(out, element, without);
  out += "</";
  out += element.Name();
  out += '>';
}

void appendInnerXml(std::string& out, const XMLElement& element, const XMLElement* without) {
  for (const XMLNode* child = element.FirstChild(); child; child = child->NextSibling()) {
    if (child->ToText()) {
      out += child->Value();
    } else if (child->ToElement()) {
      appendOuterXml(out, *child->ToElement(), without);
    }
  }
}

// --- The text of a file.

/// Carriage return becomes "&#D;", line feed "&#A;", tab "&#9;": hexadecimal digits without the "x", on purpose. The
/// printer escapes the "&", and the rewriting behind it brings it back.
std::string escapeAttributeControls(std::string_view value) {
  std::string out;
  for (char unit : value) {
    switch (unit) {
      case '\r':
        out += "&#D;";
        break;
      case '\n':
        out += "&#A;";
        break;
      case '\t':
        out += "&#9;";
        break;
      default:
        out += unit;
    }
  }
  return out;
}

void nameUtf8Encoding(std::string& text) {
  constexpr std::string_view utf16 = " encoding=\"utf-16\"";
  size_t found = text.find(utf16);
  if (found == std::string::npos) return;
  std::string out;
  size_t position = 0;
  for (; found != std::string::npos; found = text.find(utf16, position)) {
    out.append(text, position, found - position);
    out += " encoding=\"utf-8\"";
    position = found + utf16.size();
  }
  out.append(text, position);
  text = std::move(out);
}

/// First every "amp;" goes, then every "&lt;" and "&gt;", those that come of it too, becomes its character. Both at
/// once: a text to delete or to replace ends with ";", so looking at the units in front of each will do.
void unescapeMarkup(std::string& text) {
  const auto endsWith = [&text](size_t begin, size_t end, std::string_view what) {
    return end - begin >= what.size() && std::string_view(text).substr(end - what.size(), what.size()) == what;
  };
  size_t written = 0;
  for (size_t position = 0; position < text.size();) {
    const size_t semicolon = std::min(text.find(';', position), text.size());
    const bool isDeleted = semicolon < text.size() && endsWith(position, semicolon, "amp");
    const size_t length = semicolon - position - (isDeleted ? 3 : 0);
    std::memmove(text.data() + written, text.data() + position, length);
    written += length;
    position = semicolon + 1;
    if (semicolon == text.size() || isDeleted) continue;
    if (endsWith(0, written, "&lt")) {
      written -= 3;
      text[written++] = '<';
    } else if (endsWith(0, written, "&gt")) {
      written -= 3;
      text[written++] = '>';
    } else {
      text[written++] = ';';
    }
  }
  text.resize(written);
}

class Printer : public tinyxml2::XMLPrinter {
 public:
  explicit Printer(const DocumentStream& stream) : stream_(stream) {}

  bool VisitEnter(const tinyxml2::XMLDocument& document) override {
    // The base would take it from the document that entities stay as they are, and print a byte order mark.
    root_ = document.FirstChildElement();
    return true;
  }

  bool VisitEnter(const XMLElement& element, const XMLAttribute* attribute) override {
    if (root_ == &element) escapes_ = true;
    OpenElement(element.Name());
    for (; attribute; attribute = attribute->Next()) {
      if (escapes_ && std::strpbrk(attribute->Value(), "\r\n\t")) {
        PushAttribute(attribute->Name(), escapeAttributeControls(attribute->Value()).c_str());
      } else {
        PushAttribute(attribute->Name(), attribute->Value());
      }
    }
    return true;
  }

  bool VisitExit(const XMLElement& element) override {
    if (stream_.parent == &element) PrintStream();
    if (root_ == &element) escapes_ = false;
    return XMLPrinter::VisitExit(element);
  }
  using XMLPrinter::Visit;
  using XMLPrinter::VisitExit;

  WString Finish() {
    EndPiece(0);
    text_.resize(trimEndView(text_).size());
    text_.erase(0, text_.size() - trimStartView(text_).size());
    return std::move(text_);
  }

 protected:
  void Write(const char* data, size_t size) override { piece_.append(data, size); }
  void Putc(char unit) override { piece_ += unit; }
  void PrintSpace(int depth) override { piece_.append(4 * static_cast<size_t>(depth), ' '); }

 private:
  void PrintStream() {
    size_t expected = stream_.expectedChildren;
    while (const XMLElement* child = stream_.nextChild()) {
      child->Accept(this);
      EndPiece(std::exchange(expected, 0));
    }
  }

  /// What is printed so far is rewritten now. It must end behind a ">", which nothing that is rewritten holds. Room is
  /// made for so many pieces of this length, within reason.
  void EndPiece(size_t moreLikeThis) {
    nameUtf8Encoding(piece_);
    unescapeMarkup(piece_);
    WString piece = toWide(piece_.c_str());
    piece_.clear();
    if (stream_.rewrite) stream_.rewrite(piece);
    const size_t size = piece.size();
    if (text_.empty()) {
      text_ = std::move(piece);
    } else {
      text_ += piece;
    }
    if (moreLikeThis > 0) text_.reserve(text_.size() + std::min<size_t>(size, 1024) * moreLikeThis);
  }

  const DocumentStream& stream_;
  const XMLElement* root_ = nullptr;  ///< The only element whose attributes are escaped.
  bool escapes_ = false;
  std::string piece_;
  WString text_;
};

// --- The lines of a file.

/// The end of the tag that begins at the place, behind its ">", if that is in the same line; else 0.
size_t tagEnd(WStringView line, size_t position) {
  for (; position < line.size(); ++position) {
    const char16_t unit = line[position];
    if (unit == u'>') return position + 1;
    if (unit != u'"' && unit != u'\'') continue;
    position = line.find(unit, position + 1);
    if (position == WStringView::npos) return 0;
  }
  return 0;
}

/// Whether a look is enough to know that the lines don't parse: all their tags are plain ones, none closes what is not
/// open (which would end the document early), and the last one doesn't end the text with nothing left open. Most
/// SubRip files are like this, and parsing them would cost more than reading them does.
bool certainlyDontParse(const Lines& lines) {
  if (lines.Contains(u'\0')) return false;
  const WStringView units = lines.Units();
  int64_t open = 0;
  size_t line = 0;
  size_t end = 0;  // behind the last tag
  for (size_t begin; (begin = findUnit(units, u'<', end)) != WStringView::npos;) {
    while (lines.EndOf(line) <= begin) ++line;
    end = tagEnd(units.substr(0, lines.EndOf(line)), begin);
    if (end == 0) return false;
    const WStringView tag = units.substr(begin + 1, end - begin - 2);
    const bool closes = tag.starts_with(u'/');
    const bool isEmpty = tag.ends_with(u'/');
    if (tag.empty() || (closes && isEmpty) || (!closes && !isNameStart(tag.front()))) return false;
    if (closes && --open < 0) return false;
    if (!closes && !isEmpty) ++open;
  }
  const bool endsInTag = end > 0 && trimStartView(units.substr(end)).empty();
  return !endsInTag || open > 0;
}

WString joinLines(const Lines& lines) {
  WString text = lines.Joined(u"\n");
  if (!lines.empty()) text += u'\n';
  return text;
}

std::unique_ptr<TiXMLDocument> parseLines(const Lines& lines) {
  if (certainlyDontParse(lines)) return nullptr;
  auto document = std::make_unique<TiXMLDocument>();
  return document->Parse(joinedText(lines)) == 0 ? std::move(document) : nullptr;
}

}  // namespace

std::string toUtf8(WStringView text) {
  return wideToString(cText(text));
}

WString toWide(const char* utf8) {
  const size_t size = std::strlen(utf8);
  WString text(size + 1, u'\0');
  const uint32_t written = movaStr_UTF8_to_UTF16(text.data(), utf8, static_cast<uint32_t>(text.size()));
  text.resize(written > 0 ? written - 1 : 0);
  return text;
}

int TiXMLDocument::Parse(WStringView text) {
  const std::string utf8 = toUtf8(text);
  if (hasMoreAttributesThan(utf8, MaxAttributes)) {
    Clear();
    return tinyxml2::XML_ERROR_PARSING_ATTRIBUTE;
  }
  const tinyxml2::XMLError error = XMLDocument::Parse(utf8.data(), utf8.size());
  for (const XMLNode* node = firstBelow(this); node; node = nextBelow(node, this)) {
    // The nodes are this document's own.
    if (node->ToText()) mendText(*const_cast<XMLText*>(node->ToText()));
    if (node->ToElement()) mendAttributes(*const_cast<XMLElement*>(node->ToElement()));
  }
  return error;
}

const WString& joinedText(const Lines& lines) {
  return lines.Derived<joinLines>();
}

const TiXMLDocument* parsedXml(const Lines& lines) {
  return lines.Derived<parseLines>().get();
}

bool isNamed(const XMLNode* node, const char* name) {
  return node && node->Value() && std::strcmp(node->Value(), name) == 0;
}

WString valueOf(const XMLNode& node) {
  return toWide(node.Value());
}

std::optional<WString> attribute(const XMLElement& element, const char* name) {
  const char* value = element.Attribute(name);
  return value ? std::optional(toWide(value)) : std::nullopt;
}

WString attributeOrEmpty(const XMLElement& element, const char* name) {
  return attribute(element, name).value_or(WString());
}

void setAttribute(XMLElement& element, const char* name, WStringView value) {
  element.SetAttribute(name, toUtf8(value).c_str());
}

void setText(XMLElement& element, WStringView text) {
  element.SetText(toUtf8(text).c_str());
}

void appendText(XMLElement& element, WStringView text) {
  element.InsertNewText(toUtf8(text).c_str());
}

const XMLElement* firstChildElementNamed(const XMLNode* node, const char* name) {
  return node ? node->FirstChildElement(name) : nullptr;
}

const XMLNode* findNodeDeep(const XMLNode* node, const char* name) {
  for (const XMLNode* below = firstBelow(node); below; below = nextBelow(below, node)) {
    if (isNamed(below, name)) return below;
  }
  return nullptr;
}

std::vector<const XMLNode*> collectNodesDeep(const XMLNode* node, const char* name) {
  std::vector<const XMLNode*> nodes;
  for (const XMLNode* below = firstBelow(node); below; below = nextBelow(below, node)) {
    if (isNamed(below, name)) nodes.push_back(below);
  }
  return nodes;
}

const XMLElement* findElementDeep(const XMLNode* node, const char* name) {
  for (const XMLNode* below = firstBelow(node); below; below = nextBelow(below, node)) {
    if (isElementNamed(below, name)) return below->ToElement();
  }
  return nullptr;
}

std::vector<const XMLElement*> collectElementsDeep(const XMLNode* node, const char* name) {
  std::vector<const XMLElement*> elements;
  for (const XMLNode* below = firstBelow(node); below; below = nextBelow(below, node)) {
    if (isElementNamed(below, name)) elements.push_back(below->ToElement());
  }
  return elements;
}

std::vector<const XMLElement*> collectAllElements(const XMLNode* node) {
  std::vector<const XMLElement*> elements;
  for (const XMLNode* below = firstBelow(node); below; below = nextBelow(below, node)) {
    if (below->ToElement()) elements.push_back(below->ToElement());
  }
  return elements;
}

const XMLElement* elementAtPath(const XMLNode* node, std::string_view path) {
  std::string last;
  const XMLNode* parent = parentAtPath(node, path, last);
  return parent ? parent->FirstChildElement(last.c_str()) : nullptr;
}

std::vector<const XMLElement*> elementsAtPath(const XMLNode* node, std::string_view path) {
  std::vector<const XMLElement*> elements;
  std::string last;
  const XMLNode* parent = parentAtPath(node, path, last);
  if (!parent) return elements;
  for (const XMLElement* child = parent->FirstChildElement(last.c_str()); child;
       child = child->NextSiblingElement(last.c_str())) {
    elements.push_back(child);
  }
  return elements;
}

WString elementInnerText(const XMLElement& element) {
  std::string text;
  for (const XMLNode* below = firstBelow(&element); below; below = nextBelow(below, &element)) {
    if (below->ToText()) text += below->Value();
  }
  return toWide(text.c_str());
}

WString elementInnerXml(const XMLElement& element) {
  std::string markup;
  appendInnerXml(markup, element, nullptr);
  return toWide(markup.c_str());
}

WString elementOuterXml(const XMLElement& element) {
  std::string markup;
  appendOuterXml(markup, element, nullptr);
  return toWide(markup.c_str());
}

WString declarationAndRootXml(const TiXMLDocument& document, const XMLElement* without) {
  std::string markup;
  for (const XMLNode* node = document.FirstChild(); node; node = node->NextSibling()) {
    if (node->ToElement()) {
      appendOuterXml(markup, *node->ToElement(), without);
      break;
    }
    markup += "<?";
    markup += node->Value();
    markup += "?>";
  }
  return toWide(markup.c_str());
}

void appendXmlFragment(XMLElement& element, WStringView markup) {
  if (markup.find(u'<') == WStringView::npos) return setText(element, markup);
  const TiXMLDocument fragment(markup);
  if (const XMLElement* first = fragment.FirstChildElement()) {
    element.InsertEndChild(first->DeepClone(element.GetDocument()));
  } else {
    setText(element, markup);
  }
}

WString documentToText(const TiXMLDocument& document) {
  return documentToText(document, {});
}

WString documentToText(const TiXMLDocument& document, const DocumentStream& stream) {
  Printer printer(stream);
  document.Accept(&printer);
  return printer.Finish();
}

DocumentStream streamOf(TiXMLDocument& document, const XMLElement* parent, size_t count,
                        std::function<XMLElement*(size_t)> newChild) {
  DocumentStream stream;
  stream.parent = parent;
  stream.expectedChildren = count;
  XMLElement* child = nullptr;
  size_t next = 0;
  stream.nextChild = [&document, count, newChild = std::move(newChild), child, next]() mutable -> const XMLElement* {
    if (child) document.DeleteNode(child);
    return child = next < count ? newChild(next++) : nullptr;
  };
  return stream;
}

}  // namespace mova
