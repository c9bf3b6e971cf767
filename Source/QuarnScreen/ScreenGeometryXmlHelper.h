/// \file
/// The XML element of a screen.
#pragma once

#include <ostream>
#include <string>
#include <xercesc/dom/DOMNode.hpp>

#include <Common/Export.h>

/// Writers and readers of a screen's XML element, which takes one of two forms: with one child element for
/// each value, or with a base64 text and no children.
///
/// Thread-safety: as for XmlHelper.
class QUARNSCREEN_EXPORT ScreenGeometryXmlHelper {
public:
    /// Name of a screen's element, "ScreenGeometry".
    [[nodiscard]] static const std::wstring& rootNodeName();

    /// Name of its one attribute, "ClassType", which holds ITypeid::getType().
    [[nodiscard]] static const std::wstring& classTypeNodeName();

    /// "Error extracting value from tag " and the tag.
    [[nodiscard]] static std::wstring makeParseExceptionMsg(const std::wstring& tag);

    /// Writes the open tag; with children a line feed follows, without the line stays open for the text.
    /// Intended: \p type is not escaped, as a reader would expect.
    static void serializeOpenTag(std::wostream& out, int indent, const std::string& type, bool hasChildren);

    /// Writes the close tag and a line feed. Without children it stands behind the text and gets no indent.
    static void serializeCloseTag(std::wostream& out, int indent, bool hasChildren);

    static void serializeOpenTagHasChildren(std::wostream& out, int indent, const std::string& type);
    static void serializeCloseTagHasChildren(std::wostream& out, int indent);
    static void serializeOpenTagNoChildren(std::wostream& out, int indent, const std::string& type);
    static void serializeCloseTagNoChildren(std::wostream& out, int indent);

    /// Writes the whole element of the form without children; its text is the base64 of \p definition.
    static void serializeAndBase64EncodeScreenGeometry(std::wostream& out, int indent,
                                                       const std::string& type,
                                                       const std::string& definition);

    /// Definition string from the text of an element of the form without children.
    ///
    /// The bytes pass through a wide string: those that are not UTF-8 come back as U+FFFD.
    /// \throws ZelmoreParseException (line 378, empty message) where \p node has no children
    static std::string extractAndBase64DecodeDefinitionString(xercesc::DOMNode* node);
};
