/// \file
/// XML child elements with a number or a position.
#pragma once

#include <ostream>
#include <xercesc/dom/DOMNode.hpp>

#include <QuarnScreen/Point.h>

namespace quarn::detail {

/// Writes a child element with 16 significant digits.
void writeNumberTag(int indent, std::wostream& out, const wchar_t* tag, double value);

/// Returns true if \p child is the element \p tag, by exact comparison.
[[nodiscard]] bool isTag(const xercesc::DOMNode& child, const wchar_t* tag);

/// Reads \p child into \p value if it is the element \p tag.
void readNumberTag(xercesc::DOMNode* child, const wchar_t* tag, double& value);

/// Reads \p child into \p point if it is the element \p tag.
void readPointTag(xercesc::DOMNode* child, const wchar_t* tag, Point<double, 3>& point);

}  // namespace quarn::detail
