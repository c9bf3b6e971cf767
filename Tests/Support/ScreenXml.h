/// \file
/// The XML text of a screen, written and read.
#pragma once

#include <Common/TextConversion.h>
#include <QuarnScreen/IXmlSerializable.h>

#include <sstream>
#include <string>

#include "Support/Dom.h"

namespace quarn::test {

inline std::wstring xmlOf(IXmlSerializable& screen, int indent) {
    std::wostringstream out;
    screen.serialize(out, indent);
    return out.str();
}

/// Lets a screen read the root element of an XML text.
inline void readXml(IXmlSerializable& screen, const std::string& xml) {
    const DocumentPtr document = parseDocument(xml);
    screen.deserialize(document->getDocumentElement());
}

/// Lets a screen read an element that holds \p children.
inline void readChildren(IXmlSerializable& screen, const std::string& children) {
    readXml(screen, "<ScreenGeometry>" + children + "</ScreenGeometry>");
}

/// A default constructed screen that read what another one wrote.
template <class Screen>
Screen savedAndReloaded(Screen screen) {
    Screen reloaded;
    readXml(reloaded, toUtf8(xmlOf(screen, 0)));
    return reloaded;
}

}  // namespace quarn::test
