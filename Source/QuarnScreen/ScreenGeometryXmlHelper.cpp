#include <QuarnScreen/ScreenGeometryXmlHelper.h>

#include <Common/Detail/Assert.h>
#include <Common/Detail/NodeText.h>
#include <Common/TextConversion.h>
#include <Common/XmlHelper.h>
#include <Common/ZelmoreException.h>
#include <QuarnScreen/Detail/Xml/XmlBase64.h>

namespace {
constexpr int kElementWithoutTextLine = 378;
}

const std::wstring& ScreenGeometryXmlHelper::rootNodeName() {
    static const std::wstring name = L"ScreenGeometry";
    return name;
}

const std::wstring& ScreenGeometryXmlHelper::classTypeNodeName() {
    static const std::wstring name = L"ClassType";
    return name;
}

std::wstring ScreenGeometryXmlHelper::makeParseExceptionMsg(const std::wstring& tag) {
    return XmlHelper::format(L"Error extracting value from tag %s", tag);
}

void ScreenGeometryXmlHelper::serializeOpenTag(std::wostream& out, int indent, const std::string& type,
                                               bool hasChildren) {
    const std::wstring tag =
        L"<" + rootNodeName() + L" " + classTypeNodeName() + L"=\"" + fromUtf8(type) + L"\">";
    XmlHelper::writeIndented(indent, out, hasChildren ? tag + L"\n" : tag);
}

void ScreenGeometryXmlHelper::serializeCloseTag(std::wostream& out, int indent, bool hasChildren) {
    XmlHelper::writeIndented(hasChildren ? indent : 0, out, L"</" + rootNodeName() + L">\n");
}

void ScreenGeometryXmlHelper::serializeOpenTagHasChildren(std::wostream& out, int indent,
                                                          const std::string& type) {
    serializeOpenTag(out, indent, type, true);
}

void ScreenGeometryXmlHelper::serializeCloseTagHasChildren(std::wostream& out, int indent) {
    serializeCloseTag(out, indent, true);
}

void ScreenGeometryXmlHelper::serializeOpenTagNoChildren(std::wostream& out, int indent,
                                                         const std::string& type) {
    serializeOpenTag(out, indent, type, false);
}

void ScreenGeometryXmlHelper::serializeCloseTagNoChildren(std::wostream& out, int indent) {
    serializeCloseTag(out, indent, false);
}

void ScreenGeometryXmlHelper::serializeAndBase64EncodeScreenGeometry(std::wostream& out, int indent,
                                                                     const std::string& type,
                                                                     const std::string& definition) {
    serializeOpenTagNoChildren(out, indent, type);
    quarn::detail::writeBase64(out, definition);
    serializeCloseTagNoChildren(out, indent);
}

std::string ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(xercesc::DOMNode* node) {
    QUARN_ASSERT(node != nullptr);
    if (!node->hasChildNodes())
        throw ZelmoreParseException("Framework/CXX/Common/XmlHelper", kElementWithoutTextLine, L"");
    const std::string text = toUtf8(quarn::detail::textContent(*node));
    return quarn::detail::throughWideText(decodeBase64(text));
}
