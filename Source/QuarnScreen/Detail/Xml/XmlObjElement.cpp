#include "XmlObjElement.h"

#include "XmlValues.h"

namespace quarn::detail {

namespace {

constexpr int kMinChildren = 4;

int countChildren(const xercesc::DOMNode& node) {
    int count = 0;
    for (const xercesc::DOMNode* child = node.getFirstChild(); child != nullptr;
         child = child->getNextSibling())
        ++count;
    return count;
}

}  // namespace

void forEachObjElementValue(xercesc::DOMNode& element,
                            const std::function<void(ObjElementValue, xercesc::DOMNode&)>& visit) {
    if (countChildren(element) < kMinChildren) return visit(ObjElementValue::Text, element);
    for (xercesc::DOMNode* child = element.getFirstChild(); child != nullptr;
         child = child->getNextSibling()) {
        if (isTag(*child, kObjForwardTag)) visit(ObjElementValue::Forward, *child);
        if (isTag(*child, kObjUpwardTag)) visit(ObjElementValue::Upward, *child);
        if (isTag(*child, kObjScaleTag)) visit(ObjElementValue::Scale, *child);
        if (isTag(*child, kObjTextTag)) visit(ObjElementValue::Text, *child);
    }
}

}  // namespace quarn::detail
