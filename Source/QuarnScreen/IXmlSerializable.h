/// \file
/// Objects that save themselves as XML.
#pragma once

#include <ostream>
#include <xercesc/dom/DOMNode.hpp>

#include <Common/Export.h>

/// An object that writes itself as one XML element and reads itself back.
class QUARNSCREEN_EXPORT IXmlSerializable {
public:
    virtual ~IXmlSerializable();

    /// Writes the element, four blanks for each level of \p indent before each of its lines.
    virtual void serialize(std::wostream& out, int indent) = 0;

    /// Reads the element that serialize() writes. Tags may come in any order; a repeated one overwrites, an
    /// unknown one is skipped and a missing one leaves its field as it was. Must not overlap with another use
    /// of the object.
    virtual void deserialize(xercesc::DOMNode* node) = 0;
};
