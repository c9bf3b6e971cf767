/// \file
/// The XML element of an OBJ screen.
#pragma once

#include <functional>
#include <xercesc/dom/DOMNode.hpp>

namespace quarn::detail {

inline constexpr const wchar_t* kObjTextTag = L"ScreenString";
inline constexpr const wchar_t* kObjForwardTag = L"AxisForward";
inline constexpr const wchar_t* kObjUpwardTag = L"AxisUpward";
inline constexpr const wchar_t* kObjScaleTag = L"Scale";

/// A value of an OBJ screen.
enum class ObjElementValue {
    Text,     ///< The OBJ text in base64.
    Forward,  ///< Axis of the text that becomes +Y.
    Upward,   ///< Axis of the text that becomes +Z.
    Scale     ///< Factor of all positions.
};

/// Calls \p visit with each value of an element and the node that contains it, in document order. A
/// value may occur several times.
///
/// An element with fewer than four child nodes has the older form: it contains only the text,
/// itself. White space between tags counts as a child node.
void forEachObjElementValue(xercesc::DOMNode& element,
                            const std::function<void(ObjElementValue, xercesc::DOMNode&)>& visit);

}  // namespace quarn::detail
