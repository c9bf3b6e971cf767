/// \file
/// Text of a DOM node as a wide string.
#pragma once

#include <string>
#include <xercesc/dom/DOMNode.hpp>

namespace quarn::detail {

/// Wide string from UTF-16 units, surrogate pairs joined; a lone surrogate is kept as it is. Null gives "".
[[nodiscard]] std::wstring fromXmlText(const XMLCh* text);

/// The text that DOMNode::getTextContent tells: that of all text below the node, without comments and
/// processing instructions.
///
/// Unlike getTextContent it needs no recursion, so a deep tree cannot exhaust the stack, and it takes no
/// memory from the document, so it leaves the document as it was.
[[nodiscard]] std::wstring textContent(const xercesc::DOMNode& node);

}  // namespace quarn::detail
