#include "NodeText.h"

#include <xercesc/util/XMLString.hpp>

namespace quarn::detail {

namespace {

using xercesc::DOMNode;

constexpr char32_t kFirstLead = 0xD800;
constexpr char32_t kFirstTrail = 0xDC00;
constexpr char32_t kAfterTrail = 0xE000;
constexpr char32_t kFirstSupplementary = 0x10000;

bool isLead(wchar_t character) {
    const auto unit = static_cast<char32_t>(character);
    return unit >= kFirstLead && unit < kFirstTrail;
}

// Joins a trail surrogate to a lead surrogate at the end of `result`, also if the two come from
// adjacent text nodes.
void appendXmlText(const XMLCh* text, std::wstring& result) {
    if (text == nullptr) return;
    result.reserve(result.size() + xercesc::XMLString::stringLen(text));
    for (; *text != 0; ++text) {
        const char32_t unit = *text;
        const bool isTrail = unit >= kFirstTrail && unit < kAfterTrail;
        if (isTrail && !result.empty() && isLead(result.back())) {
            const auto lead = static_cast<char32_t>(result.back());
            result.back() = static_cast<wchar_t>(kFirstSupplementary + ((lead - kFirstLead) << 10U) +
                                                 (unit - kFirstTrail));
        } else {
            result.push_back(static_cast<wchar_t>(unit));
        }
    }
}

bool hasTextInChildren(const DOMNode& node) {
    const auto type = node.getNodeType();
    return type == DOMNode::ELEMENT_NODE || type == DOMNode::ENTITY_NODE ||
           type == DOMNode::ENTITY_REFERENCE_NODE || type == DOMNode::DOCUMENT_FRAGMENT_NODE;
}

bool isTextNode(const DOMNode& node) {
    const auto type = node.getNodeType();
    return type == DOMNode::TEXT_NODE || type == DOMNode::CDATA_SECTION_NODE;
}

// Returns the node that follows in document order, without the children of `node`; null after the
// last node below `top`.
const DOMNode* nextBelow(const DOMNode& top, const DOMNode* node) {
    while (node != &top) {
        if (const DOMNode* sibling = node->getNextSibling()) return sibling;
        node = node->getParentNode();
    }
    return nullptr;
}

}  // namespace

std::wstring fromXmlText(const XMLCh* text) {
    std::wstring result;
    appendXmlText(text, result);
    return result;
}

std::wstring textContent(const DOMNode& node) {
    if (!hasTextInChildren(node)) return fromXmlText(node.getNodeValue());

    std::wstring result;
    const DOMNode* current = node.getFirstChild();
    while (current != nullptr) {
        if (isTextNode(*current)) appendXmlText(current->getNodeValue(), result);
        const DOMNode* child = hasTextInChildren(*current) ? current->getFirstChild() : nullptr;
        current = child != nullptr ? child : nextBelow(node, current);
    }
    return result;
}

}  // namespace quarn::detail
