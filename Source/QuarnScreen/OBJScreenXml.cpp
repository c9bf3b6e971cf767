// The XML element of an OBJ screen.
#include <QuarnScreen/OBJScreen.h>

#include <clocale>
#include <cwchar>
#include <sstream>

#include <Common/Detail/NodeText.h>
#include <Common/XmlHelper.h>
#include <QuarnScreen/Detail/Xml/XmlBase64.h>
#include <QuarnScreen/Detail/Xml/XmlValues.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

namespace {

constexpr const wchar_t* kTextTag = L"ScreenString";
constexpr const wchar_t* kForwardTag = L"AxisForward";
constexpr const wchar_t* kUpwardTag = L"AxisUpward";
constexpr const wchar_t* kScaleTag = L"Scale";

// An element with fewer child nodes, blanks between tags counted, is the older form.
constexpr int kMinChildren = 4;

int countChildren(const xercesc::DOMNode& node) {
    int count = 0;
    for (const xercesc::DOMNode* child = node.getFirstChild(); child != nullptr;
         child = child->getNextSibling())
        ++count;
    return count;
}

// The number at the text's start as the C library reads it in the C locale; 0 where there is none.
float scaleFrom(const std::wstring& text) {
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    return static_cast<float>(wcstod_l(text.c_str(), nullptr, cLocale));
}

}  // namespace

void OBJScreen::serialize(std::wostream& out, int indent) {
    ScreenGeometryXmlHelper::serializeOpenTagHasChildren(out, indent, getType());
    XmlHelper::writeIndented(indent + 1, out, std::wstring(L"<") + kTextTag + L">");
    quarn::detail::writeBase64(out, quarn::detail::throughWideText(loadedFileContents));
    XmlHelper::writeIndented(0, out, std::wstring(L"</") + kTextTag + L">\n");
    XmlHelper::writeTag(indent + 1, out, kForwardTag, axisForward);
    XmlHelper::writeTag(indent + 1, out, kUpwardTag, axisUpward);
    quarn::detail::writeNumberTag(indent + 1, out, kScaleTag, static_cast<double>(scale));
    ScreenGeometryXmlHelper::serializeCloseTagHasChildren(out, indent);
}

void OBJScreen::deserialize(xercesc::DOMNode* node) {
    std::string text;
    if (countChildren(*node) < kMinChildren) {
        text = ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(node);
    } else {
        for (xercesc::DOMNode* child = node->getFirstChild(); child != nullptr;
             child = child->getNextSibling()) {
            if (quarn::detail::isTag(*child, kForwardTag)) axisForward = quarn::detail::textContent(*child);
            if (quarn::detail::isTag(*child, kUpwardTag)) axisUpward = quarn::detail::textContent(*child);
            if (quarn::detail::isTag(*child, kScaleTag))
                scale = scaleFrom(quarn::detail::textContent(*child));
            if (quarn::detail::isTag(*child, kTextTag))
                text = ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(child);
        }
    }
    // Axes and scale apply wherever they stand, so the text comes last.
    std::istringstream stream(std::move(text));
    deserialize(stream);
}
