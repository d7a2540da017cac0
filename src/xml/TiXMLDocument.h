/// Documents of the XML formats: tinyxml2 inside, wide strings outside.
///
/// Nodes are tinyxml2's own and hold UTF-8. Names are passed as UTF-8 literals, so that looking at a node costs no
/// conversion; texts and attribute values come and go as wide strings. A node never outlives its document.
#pragma once

#include <tinyxml2.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/Lines.h"
#include "movautil/WideString.h"

namespace mova {

using tinyxml2::XMLAttribute;
using tinyxml2::XMLElement;
using tinyxml2::XMLNode;
using tinyxml2::XMLText;

// --- Between the two encodings.

/// The text up to its first zero unit. Lone surrogates become U+FFFD.
std::string toUtf8(WStringView text);
WString toWide(const char* utf8);

// --- The document.

class TiXMLDocument : public tinyxml2::XMLDocument {
 public:
  TiXMLDocument() : XMLDocument(false, tinyxml2::PRESERVE_WHITESPACE) {}
  /// A document from a skeleton, or from any other text whose result is not looked at.
  explicit TiXMLDocument(WStringView text) : TiXMLDocument() { Parse(text); }

  /// 0 on success, anything else on failure, which leaves no nodes.
  ///
  /// Texts lose their leading white space and are never only white space; the five named entities and numeric
  /// references are decoded in texts and attribute values, any other "&" stays; CR LF, LF CR and CR become LF. Elements
  /// lie at most 99 deep and have at most `MaxAttributes` attributes. A closing tag on the top level ends the document,
  /// and what follows is not looked at; text behind the last element is a failure.
  int Parse(WStringView text);

  /// The library looks at all attributes of an element for each further one, so there has to be a limit.
  static constexpr int MaxAttributes = 1000;
};

/// The lines, each followed by a line feed. Made once for all formats that ask.
const WString& joinedText(const Lines& lines);

/// The document that the joined lines parse to, or null if they don't. (Trimming them first makes no difference.) Made
/// once for all formats that ask; it may have no element.
const TiXMLDocument* parsedXml(const Lines& lines);

// --- Names, values, attributes.

/// Whether the name of an element, or the value of a node of any other kind, equals `name`, case included. False for
/// null.
bool isNamed(const XMLNode* node, const char* name);

/// The name of an element, the value of any other node.
WString valueOf(const XMLNode& node);

/// Nothing when the attribute is absent.
std::optional<WString> attribute(const XMLElement& element, const char* name);
WString attributeOrEmpty(const XMLElement& element, const char* name);
/// Attributes print in the order in which they were set first.
void setAttribute(XMLElement& element, const char* name, WStringView value);

/// Replaces the value of the first child if that is a text, otherwise inserts a text as the first child.
void setText(XMLElement& element, WStringView text);
/// Adds a text as the last child.
void appendText(XMLElement& element, WStringView text);

// --- Looking for nodes, in document order. A null node has no children.

/// Any element where the name is null.
const XMLElement* firstChildElementNamed(const XMLNode* node, const char* name);

/// Nodes below the node, of any kind, whose value equals the name.
const XMLNode* findNodeDeep(const XMLNode* node, const char* name);
std::vector<const XMLNode*> collectNodesDeep(const XMLNode* node, const char* name);

/// The same, elements only.
const XMLElement* findElementDeep(const XMLNode* node, const char* name);
std::vector<const XMLElement*> collectElementsDeep(const XMLNode* node, const char* name);
std::vector<const XMLElement*> collectAllElements(const XMLNode* node);

/// By names joined with "/", each the first child element of that name. A path may begin with the node's own name, and
/// then goes on behind it.
const XMLElement* elementAtPath(const XMLNode* node, std::string_view path);
/// All child elements that bear the last name of the path, below the first match of the names before it.
std::vector<const XMLElement*> elementsAtPath(const XMLNode* node, std::string_view path);

// The same for nodes that may be changed.
inline XMLElement* firstChildElementNamed(XMLNode* node, const char* name) {
  return const_cast<XMLElement*>(firstChildElementNamed(static_cast<const XMLNode*>(node), name));
}
inline XMLNode* findNodeDeep(XMLNode* node, const char* name) {
  return const_cast<XMLNode*>(findNodeDeep(static_cast<const XMLNode*>(node), name));
}
inline XMLElement* findElementDeep(XMLNode* node, const char* name) {
  return const_cast<XMLElement*>(findElementDeep(static_cast<const XMLNode*>(node), name));
}
inline XMLElement* elementAtPath(XMLNode* node, std::string_view path) {
  return const_cast<XMLElement*>(elementAtPath(static_cast<const XMLNode*>(node), path));
}

// --- From nodes to text and back.

/// The values of all text nodes in the subtree.
WString elementInnerText(const XMLElement& element);

/// The children as markup: texts as their value, elements as elementOuterXml gives them, nothing else.
WString elementInnerXml(const XMLElement& element);

/// The element as one line of markup. Nothing is escaped and no empty-element form is used: the result is meant to be
/// put back as a text that documentToText lets through.
WString elementOuterXml(const XMLElement& element);

/// Each top-level node before the first element as "<?value?>", of whatever kind it is, then the first element. The
/// element `without` is left out.
WString declarationAndRootXml(const TiXMLDocument& document, const XMLElement* without = nullptr);

/// Adds the first element of the markup as the last child; what stands before it and behind it is dropped. Markup
/// without an element, or that can't be parsed, becomes the element's text as a whole (as by setText).
void appendXmlFragment(XMLElement& element, WStringView markup);

/// The text of a file: the printer's layout, four blanks a level, trimmed. Then " encoding="utf-16"" becomes "utf-8",
/// every "amp;" goes, in words too, and every "&lt;" and "&gt;" that is there then becomes the character, in this
/// order. So markup that a format stores as text comes out as markup, and an ampersand comes out bare, on purpose.
WString documentToText(const TiXMLDocument& document);

/// The same for documents whose tree is too large to stand in memory as a whole.
struct DocumentStream {
  /// Gets further children, which are printed as if they were its last ones.
  const XMLElement* parent = nullptr;
  /// Gives one child at a time, then null. A child may change or go once the next one is asked for.
  std::function<const XMLElement*()> nextChild;
  /// Changes the text piece by piece. A piece ends behind a ">".
  std::function<void(WString&)> rewrite;
  /// About how many children there are: room is made for them.
  size_t expectedChildren = 0;
};
WString documentToText(const TiXMLDocument& document, const DocumentStream& stream);

/// The stream of `count` children that `newChild(i)` makes as new elements of the document, which belong to the stream.
DocumentStream streamOf(TiXMLDocument& document, const XMLElement* parent, size_t count,
                        std::function<XMLElement*(size_t)> newChild);

}  // namespace mova
