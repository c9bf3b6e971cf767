#include "MeshText.h"

#include <Common/Detail/NodeText.h>
#include <Common/TextConversion.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnScreen/Detail/Xml/XmlObjElement.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

namespace quarn {

namespace {

float scaleOf(const xercesc::DOMNode& node, const std::string& file, const XmlDocument& document) {
    try {
        return objScaleFrom("Scale", toUtf8(detail::textContent(node)));
    } catch (const Error& error) {
        throw error.at(file, document.lineOf(node));
    }
}

}  // namespace

MeshText meshTextOf(ScreenFile file, const ObjOptions& options) {
    return {.format = file.format, .source = objSourceOf(file.path, std::move(file.text), options)};
}

MeshText objTextOfElement(const std::string& file, const XmlDocument& document,
                          xercesc::DOMElement& element) {
    ObjSource source{.file = file, .name = file + " (OBJ text)", .text = {}, .frame = {}};
    detail::forEachObjElementValue(element, [&](detail::ObjElementValue value, xercesc::DOMNode& node) {
        switch (value) {
            case detail::ObjElementValue::Text:
                if (node.getFirstChild() != nullptr)
                    source.text = ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(&node);
                break;
            case detail::ObjElementValue::Forward:
                source.frame.forward = toUtf8(detail::textContent(node));
                break;
            case detail::ObjElementValue::Upward:
                source.frame.upward = toUtf8(detail::textContent(node));
                break;
            case detail::ObjElementValue::Scale:
                source.frame.scale = scaleOf(node, file, document);
                break;
        }
    });
    const std::uint64_t line = document.lineOf(element);
    checkObjAxes(source.frame, file, line);
    if (source.text.empty())
        throw Error({.found = "found no OBJ text in the ScreenGeometry element",
                     .expected = "<ScreenString> with its base64",
                     .file = file,
                     .line = line});
    return {.format = ScreenFormat::Obj, .source = std::move(source)};
}

MeshText stlTextOfElement(const std::string& file, const XmlDocument& document,
                          xercesc::DOMElement& element) {
    if (element.getFirstChild() == nullptr)
        throw Error({.found = "found no STL text in the ScreenGeometry element",
                     .expected = "its base64",
                     .file = file,
                     .line = document.lineOf(element)});
    return {.format = ScreenFormat::Stl,
            .source = {.file = file,
                       .name = file + " (STL text)",
                       .text = ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(&element),
                       .frame = {}}};
}

}  // namespace quarn
