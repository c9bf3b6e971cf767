/// \file
/// Reads and checks the element of a screen in an XML document.
#pragma once

#include <string>
#include <vector>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/Observer.h>

#include "ScreenTags.h"
#include "XmlDocument.h"

namespace quarn {

/// A ScreenGeometry element and its file, for errors with the line.
class ScreenElement {
public:
    /// \param warningObserver receives warnings about parameters
    ScreenElement(std::string fileName, const XmlDocument& xmlDocument, xercesc::DOMElement& screenElement,
                  Observer& warningObserver)
        : file(std::move(fileName)),
          document(xmlDocument),
          element(screenElement),
          observer(warningObserver) {}

    /// Returns the class of the element. Throws an Error if it is unknown.
    [[nodiscard]] std::string typeName() const;
    /// Returns the parameters of an analytic screen. Throws an Error for a missing or invalid one.
    [[nodiscard]] std::vector<Parameter> parametersOf(const ScreenType& screenType) const;

private:
    [[nodiscard]] Parameter parameterOf(const ScreenTag& tag) const;
    void readInto(Parameter& parameter, const ScreenTag& tag, const xercesc::DOMNode& child) const;
    [[nodiscard]] Error error(const xercesc::DOMNode& node, std::string found, std::string expected) const {
        return Error({.found = std::move(found),
                      .expected = std::move(expected),
                      .file = file,
                      .line = document.lineOf(node)});
    }

    std::string file;
    const XmlDocument& document;
    xercesc::DOMElement& element;
    Observer& observer;
};

}  // namespace quarn
