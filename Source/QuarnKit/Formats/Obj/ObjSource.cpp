#include "ObjSource.h"

#include <cmath>

#include <Common/Detail/NodeText.h>
#include <Common/TextConversion.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnScreen/OBJScreen.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

namespace quarn {

namespace {

constexpr std::string_view kAxes = "XYZ";

// Axes that are parallel, or none, would give a useless matrix. The last letter of a name counts.
void checkAxes(const ObjFrame& frame, const std::string& file, std::uint64_t line) {
    const auto axisOf = [](const std::string& name) {
        return name.empty() ? std::string_view::npos : kAxes.find(name.back());
    };
    const std::size_t forward = axisOf(frame.forward);
    const std::size_t upward = axisOf(frame.upward);
    if (forward != std::string_view::npos && upward != std::string_view::npos && forward != upward) return;
    throw Error({.found = "found the axes " + quotedExcerpt(frame.forward) + " for forward and " +
                          quotedExcerpt(frame.upward) + " for up",
                 .expected = "two different ones of X, Y and Z, such as -Z and Y",
                 .file = file,
                 .line = line});
}

// The older form has no tags, and its text is the OBJ text itself.
constexpr int kMinChildren = 4;

int countChildren(const xercesc::DOMNode& node) {
    int count = 0;
    for (const auto* child = node.getFirstChild(); child != nullptr; child = child->getNextSibling()) ++count;
    return count;
}

void readTag(const std::string& path, const XmlDocument& document, xercesc::DOMNode& tag, ObjSource& source) {
    const std::wstring name = detail::fromXmlText(tag.getNodeName());
    if (name == L"AxisForward") source.frame.forward = toUtf8(detail::textContent(tag));
    if (name == L"AxisUpward") source.frame.upward = toUtf8(detail::textContent(tag));
    if (name == L"ScreenString" && tag.getFirstChild() != nullptr)
        source.text = ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(&tag);
    if (name != L"Scale") return;
    try {
        source.frame.scale = objScaleFrom("Scale", toUtf8(detail::textContent(tag)));
    } catch (const Error& error) {
        throw error.at(path, document.lineOf(tag));
    }
}

}  // namespace

Matrix<float, 4> ObjFrame::matrix() const {
    return OBJScreen::getTransformMatrix(fromUtf8(forward), fromUtf8(upward), scale);
}

float objScaleFrom(const std::string& name, const std::string& text) {
    const auto number = parseNumber(text);
    const auto scale = static_cast<float>(number.value_or(0.0));
    if (scale == 0.0F || !std::isfinite(scale))
        throw Error({.found = "found " + name + " " + quotedExcerpt(text),
                     .expected = "a number other than 0 that a float holds, such as 0.001"});
    return scale;
}

ObjSource objSourceOf(ScreenFile file, const ObjOptions& options) {
    ObjSource source{.file = file.path, .name = file.path, .text = std::move(file.text), .frame = {}};
    source.frame.forward = options.forward.value_or(source.frame.forward);
    source.frame.upward = options.upward.value_or(source.frame.upward);
    source.frame.scale = options.scale.value_or(source.frame.scale);
    checkAxes(source.frame, {}, 0);
    return source;
}

ObjSource objSourceOf(const std::string& path, const XmlDocument& document, xercesc::DOMElement& element) {
    ObjSource source{.file = path, .name = path + " (OBJ text)", .text = {}, .frame = {}};
    if (countChildren(element) >= kMinChildren) {
        for (auto* child = element.getFirstChild(); child != nullptr; child = child->getNextSibling())
            readTag(path, document, *child, source);
    } else if (element.getFirstChild() != nullptr) {
        source.text = ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(&element);
    }
    const std::uint64_t line = document.lineOf(element);
    checkAxes(source.frame, path, line);
    if (source.text.empty())
        throw Error({.found = "found no OBJ text in the ScreenGeometry element",
                     .expected = "<ScreenString> with its base64",
                     .file = path,
                     .line = line});
    return source;
}

}  // namespace quarn
