/// \file
/// Xerces documents and nodes for tests.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace quarn::test {

/// Starts Xerces once; it ends with the program.
inline void startXerces() {
    struct Session {
        Session() { xercesc::XMLPlatformUtils::Initialize(); }
        ~Session() { xercesc::XMLPlatformUtils::Terminate(); }
        Session(const Session&) = delete;
        Session& operator=(const Session&) = delete;
    };
    static const Session session;
}

/// Frees a document with all its nodes.
struct ReleaseDocument {
    void operator()(xercesc::DOMDocument* document) const { document->release(); }
};
using DocumentPtr = std::unique_ptr<xercesc::DOMDocument, ReleaseDocument>;

/// UTF-16 units of a wide string. A surrogate is copied as it is.
inline std::u16string toXmlText(const std::wstring& text) {
    std::u16string units;
    for (const wchar_t character : text) {
        const auto codePoint = static_cast<char32_t>(character);
        if (codePoint >= 0x10000U) {
            units += static_cast<char16_t>(0xD800U + ((codePoint - 0x10000U) >> 10U));
            units += static_cast<char16_t>(0xDC00U + (codePoint & 0x3FFU));
        } else {
            units += static_cast<char16_t>(codePoint);
        }
    }
    return units;
}

/// A document without any node.
inline DocumentPtr newDocument() {
    startXerces();
    auto* implementation = xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS");
    return DocumentPtr(implementation->createDocument());
}

/// The document of an XML text. Entities of its own DOCTYPE become reference nodes.
/// \throws std::runtime_error where the text is not well-formed
inline DocumentPtr parseDocument(const std::string& xml) {
    startXerces();
    xercesc::XercesDOMParser parser;
    xercesc::HandlerBase throwAtFatalError;
    parser.setErrorHandler(&throwAtFatalError);
    parser.setCreateEntityReferenceNodes(true);
    parser.setLoadExternalDTD(false);
    const auto* bytes = reinterpret_cast<const XMLByte*>(xml.data());
    try {
        parser.parse(xercesc::MemBufInputSource(bytes, xml.size(), u"test"));
    } catch (const xercesc::SAXException&) {
        throw std::runtime_error("not well-formed: " + xml);
    }
    return DocumentPtr(parser.adoptDocument());
}

/// Appends an element with one text node to \p parent; an empty text gives no node.
inline xercesc::DOMElement* appendElement(xercesc::DOMNode& parent, const std::wstring& name,
                                          const std::wstring& text = {}) {
    const bool isDocument = parent.getNodeType() == xercesc::DOMNode::DOCUMENT_NODE;
    auto* document = isDocument ? static_cast<xercesc::DOMDocument*>(&parent) : parent.getOwnerDocument();
    auto* element = document->createElement(toXmlText(name).c_str());
    if (!text.empty()) element->appendChild(document->createTextNode(toXmlText(text).c_str()));
    parent.appendChild(element);
    return element;
}

}  // namespace quarn::test
