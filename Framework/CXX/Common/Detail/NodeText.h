/// \file
/// Text of DOM nodes as wide strings.
#pragma once

#include <string>
#include <xercesc/dom/DOMNode.hpp>

namespace quarn::detail {

/// Converts UTF-16 units to a wide string and joins surrogate pairs. A lone surrogate is kept
/// unchanged. Null gives "".
[[nodiscard]] std::wstring fromXmlText(const XMLCh* text);

/// Returns the text of all text nodes below the node, without comments and processing instructions,
/// as DOMNode::getTextContent does.
///
/// Unlike getTextContent, the function is not recursive, so a deep tree cannot overflow the stack.
/// It allocates no memory from the document, so the document is unchanged.
[[nodiscard]] std::wstring textContent(const xercesc::DOMNode& node);

}  // namespace quarn::detail
