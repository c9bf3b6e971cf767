#include "XmlValues.h"

#include <Common/Detail/NodeText.h>
#include <Common/XmlHelper.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

namespace quarn::detail {

void writeNumberTag(int indent, std::wostream& out, const wchar_t* tag, double value) {
    XmlHelper::writeTag(indent, out, tag, XmlHelper::format(L"%.15e", value));
}

bool isTag(const xercesc::DOMNode& child, const wchar_t* tag) {
    return fromXmlText(child.getNodeName()) == tag;
}

void readNumberTag(xercesc::DOMNode* child, const wchar_t* tag, double& value) {
    if (!isTag(*child, tag)) return;
    value = XmlHelper::readDouble(child, ScreenGeometryXmlHelper::makeParseExceptionMsg(tag).c_str());
}

void readPointTag(xercesc::DOMNode* child, const wchar_t* tag, Point<double, 3>& point) {
    if (!isTag(*child, tag)) return;
    point = XmlHelper::readPoint(child, ScreenGeometryXmlHelper::makeParseExceptionMsg(tag).c_str());
}

}  // namespace quarn::detail
