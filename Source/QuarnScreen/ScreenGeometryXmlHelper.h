/// \file
/// The XML element of a screen.
#pragma once

#include <ostream>
#include <string>
#include <xercesc/dom/DOMNode.hpp>

#include <Common/Export.h>

/// Writes and reads the XML element of a screen.
///
/// The element has one of two forms: with one child element per value, or with a base64 text and no
/// child elements.
///
/// Thread-safety: as for XmlHelper.
///
/// \code{.cpp}
/// using Helper = ScreenGeometryXmlHelper;
/// std::wostringstream xml;
/// Helper::serializeAndBase64EncodeScreenGeometry(xml, 0, "class OBJScreen", "v 0 0 0");
/// assert(xml.str().find(L"=\"class OBJScreen\">diAwIDAgMA==</Screen") != std::wstring::npos);
/// \endcode
class QUARNSCREEN_EXPORT ScreenGeometryXmlHelper {
public:
    /// Returns the name of a screen's element: "ScreenGeometry".
    [[nodiscard]] static const std::wstring& rootNodeName();

    /// Returns the name of the element's attribute: "ClassType". Its value is ITypeid::getType().
    [[nodiscard]] static const std::wstring& classTypeNodeName();

    /// Returns "Error extracting value from tag " and the tag.
    [[nodiscard]] static std::wstring makeParseExceptionMsg(const std::wstring& tag);

    /// Writes the open tag with the indent of XmlHelper::writeIndented().
    /// \param out stream to write to
    /// \param indent level of indentation
    /// \param type value of the attribute, in UTF-8
    /// \param hasChildren end the line after the tag; otherwise the line remains open for the text
    /// \note Intended: \p type is not escaped; a reader would expect escaped markup.
    static void serializeOpenTag(std::wostream& out, int indent, const std::string& type, bool hasChildren);

    /// Writes the close tag and a line feed.
    /// \param out stream to write to
    /// \param indent level of indentation
    /// \param hasChildren indent the tag; otherwise the tag follows the text on its line
    static void serializeCloseTag(std::wostream& out, int indent, bool hasChildren);

    /// Writes the open or the close tag, with the flag that its name states.
    static void serializeOpenTagHasChildren(std::wostream& out, int indent, const std::string& type);
    static void serializeCloseTagHasChildren(std::wostream& out, int indent);
    static void serializeOpenTagNoChildren(std::wostream& out, int indent, const std::string& type);
    static void serializeCloseTagNoChildren(std::wostream& out, int indent);

    /// Writes the whole element of the form with a text: the base64 of \p definition. O(n).
    static void serializeAndBase64EncodeScreenGeometry(std::wostream& out, int indent,
                                                       const std::string& type,
                                                       const std::string& definition);

    /// Returns the definition from the text of an element of the form with a text. O(n).
    ///
    /// Decoding stops at the first character outside of the base64 alphabet, as in decodeBase64().
    /// The bytes pass through a wide string: bytes that are not UTF-8 are returned as U+FFFD.
    /// \return the definition; empty if the text does not start with base64, or has no UTF-8 form
    /// \pre \p node is not null
    /// \throws ZelmoreParseException (line 378, empty message) if \p node has no child nodes
    static std::string extractAndBase64DecodeDefinitionString(xercesc::DOMNode* node);
};
