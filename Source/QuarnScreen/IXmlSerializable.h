/// \file
/// Objects that save themselves as XML.
#pragma once

#include <ostream>
#include <xercesc/dom/DOMNode.hpp>

#include <Common/Export.h>

/// An object that writes itself as one XML element and reads itself back.
///
/// Numbers are written with 16 significant digits in the classic locale. A double may need 17, so a
/// value that is read back may differ in its last bit.
///
/// Thread-safety: neither operation may overlap with another use of the object.
///
/// \code{.cpp}
/// FlatScreen screen(4.0, 2.5);
/// std::wostringstream xml;
/// screen.serialize(xml, 0);
/// const std::wstring width = L"<Screen_Width>4.000000000000000e+00</Screen_Width>";
/// assert(xml.str().find(width) != std::wstring::npos);
/// \endcode
class QUARNSCREEN_EXPORT IXmlSerializable {
public:
    virtual ~IXmlSerializable();

    /// Writes the element, with four blanks for each level of \p indent at the start of each line.
    /// An indent of zero or less writes no blanks.
    virtual void serialize(std::wostream& out, int indent) = 0;

    /// Reads the element that serialize() writes.
    ///
    /// Tags may come in any order. A repeated tag overwrites, an unknown tag is skipped, and a
    /// missing tag leaves its field unchanged. A tag without a number sets its field to 0. Numbers
    /// are finite: text such as "inf" or "nan" reads as 0, and a number that overflows reads as the
    /// largest double. Values are not validated otherwise.
    /// \throws ZelmoreParseException if the definition is a base64 text whose element has no child
    ///         nodes: OBJScreen, STLScreen
    /// \pre \p node is not null
    virtual void deserialize(xercesc::DOMNode* node) = 0;
};
