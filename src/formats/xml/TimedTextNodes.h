/// What the writers of Timed Text documents share: the nodes of a caption's text, and the ids of a header's styles.
#pragma once

#include <vector>

#include "xml/TiXMLDocument.h"

namespace mova {

/// Fills a "p" with the lines of a text, "br" between them. "<i>", "<b>" and "<font color=…>" open a "span" each, all
/// of them direct children of the "p", so that nothing nests; other markup goes through as characters.
///
/// A closing tag ends the span and goes on with an empty text, or, where an opening tag had put a node aside, with a
/// copy of that node without its value: a span becomes an element without a name, on purpose. "<i>" puts aside the node
/// before it; "<b>" does so only if `boldIsStacked`.
void appendTextLines(XMLElement& p, WStringView text, bool boldIsStacked);

/// Takes namespace declarations that say nothing out of a printed document.
void dropNamespaceLeftovers(WString& text);

/// The ids of the styles in the head of a document, in order: "xml:id", else "id".
std::vector<WString> getStyleIdsFromHeader(WStringView header);

}  // namespace mova
