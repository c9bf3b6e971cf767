#include "XmlDocument.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>

#include <Common/Detail/NodeText.h>
#include <QuarnKit/Base/CurrentError.h>
#include <QuarnKit/Base/MemoryLimit.h>

namespace quarn {

namespace {

constexpr int kMaxDepth = 64;
constexpr XMLSize_t kMaxEntityExpansions = 100;

// The parser searches for names and repeated attributes linearly: 10,000 take about 0.1 s and
// 200,000 about 40 s.
constexpr std::size_t kMaxNames = 10000;
constexpr std::size_t kMaxAttributes = 10000;

// Upper bounds of the memory of the tree, measured with documents that only contain the costly item
// (Xerces-C++ 3.2). kMemoryPerByte: 11 bytes for each byte of one long name, 8 for an attribute's
// value and 6 for text, the bytes of the file included.
constexpr std::uint64_t kMemoryPerElement = 600;    // an empty one 240, and the text near it
constexpr std::uint64_t kMemoryPerAttribute = 350;  // an empty one 300

// Once for the life of the process: the library crashes if threads initialize and terminate it.
void initializeXerces() {
    static const bool isInitialized = [] {
        xercesc::XMLPlatformUtils::Initialize();
        return true;
    }();
    static_cast<void>(isInitialized);
}

Error tooLargeError(std::uint64_t limit, std::uint64_t line) {
    return Error({.found = "found a document that may need more than " + memorySizeText(limit) + " of memory",
                  .expected = "a smaller one",
                  .line = line,
                  .remedy = {.kind = RemedyKind::RaiseMemoryLimit}});
}

class ThrowingHandler : public xercesc::HandlerBase {
public:
    void error(const xercesc::SAXParseException& exception) override { throw exception; }
    void fatalError(const xercesc::SAXParseException& exception) override { throw exception; }
};

}  // namespace

// Builds the tree, stores the lines of its elements, and throws for refused contents.
class XmlDocument::Parser : public xercesc::XercesDOMParser {
public:
    struct PlacedElement {
        xercesc::DOMElement* element;
        std::uint64_t line;
    };

    Parser(std::uint64_t fileSize, std::uint64_t maxMemory)
        : need(fileSize * XmlDocument::kMemoryPerByte), limit(maxMemory) {
        setErrorHandler(&handler);
        setSecurityManager(&security);
        setValidationScheme(Val_Never);
        setLoadExternalDTD(false);
        setDisableDefaultEntityResolution(true);
        setDoSchema(false);
        setLoadSchema(false);
        setDoXInclude(false);
        security.setEntityExpansionLimit(kMaxEntityExpansions);
    }

    void doctypeDecl(const xercesc::DTDElementDecl& /*declaration*/, const XMLCh* /*publicId*/,
                     const XMLCh* /*systemId*/, bool /*hasInternal*/, bool /*hasExternal*/) override {
        throw refusal("a DOCTYPE", "a document without one");
    }

    void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uri, const XMLCh* prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount,
                      bool isEmpty, bool isRoot) override {
        if (++depth > kMaxDepth)
            throw refusal("elements nested more than " + std::to_string(kMaxDepth) + " deep",
                          "at most " + std::to_string(kMaxDepth) + " levels");
        need += kMemoryPerElement + attributeCount * kMemoryPerAttribute;
        if (need > limit) throw tooLargeError(limit, line());
        names.insert(declaration.getFullName());
        for (XMLSize_t i = 0; i < attributeCount; ++i) names.insert(attributes.elementAt(i)->getQName());
        if (names.size() > kMaxNames)
            throw refusal("more than " + std::to_string(kMaxNames) + " different names", "fewer");
        XercesDOMParser::startElement(declaration, uri, prefix, attributes, attributeCount, isEmpty, isRoot);
        elements.push_back({dynamic_cast<xercesc::DOMElement*>(getCurrentNode()), line()});
    }

    void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uri, bool isRoot,
                    const XMLCh* prefix) override {
        --depth;
        XercesDOMParser::endElement(declaration, uri, isRoot, prefix);
    }

    // Comments, instructions and limits of CDATA within text get no node, since no screen uses
    // them.
    void docComment(const XMLCh* /*text*/) override {}
    void docPI(const XMLCh* /*target*/, const XMLCh* /*data*/) override {}
    void docCharacters(const XMLCh* text, XMLSize_t length, bool /*isCData*/) override {
        XercesDOMParser::docCharacters(text, length, false);
    }

    [[nodiscard]] const std::vector<PlacedElement>& placedElements() const { return elements; }

private:
    [[nodiscard]] Error refusal(const std::string& found, std::string expected) const {
        return Error({.found = "found " + found, .expected = std::move(expected), .line = line()});
    }
    [[nodiscard]] std::uint64_t line() const { return getScanner()->getLocator()->getLineNumber(); }

    ThrowingHandler handler;
    xercesc::SecurityManager security;
    std::vector<PlacedElement> elements;
    std::unordered_set<std::basic_string<XMLCh>> names;
    std::uint64_t need;
    std::uint64_t limit;
    int depth = 0;
};

namespace {

// The parser searches attributes before it reports their element, so they are counted beforehand:
// each has an equals sign, and none contains a less-than sign.
void refuseManyAttributes(const std::string& text) {
    std::size_t count = 0;
    std::uint64_t line = 1;
    for (const char byte : text) {
        if (byte == '\n') ++line;
        if (byte == '<') count = 0;
        if (byte == '=' && ++count > kMaxAttributes)
            throw Error(
                {.found = "found an element with more than " + std::to_string(kMaxAttributes) + " attributes",
                 .expected = "fewer",
                 .line = line});
    }
}

}  // namespace

XmlDocument::XmlDocument(const std::string& path, const std::string& text, std::uint64_t maxMemory) {
    try {
        refuseManyAttributes(text);
        initializeXerces();
        parser = std::make_unique<Parser>(text.size(), maxMemory);
        const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                                "document");
        parser->parse(source);
    } catch (...) {
        const Error error = currentError();
        throw error.at(path, error.details().line);
    }
}

XmlDocument::~XmlDocument() = default;

std::vector<xercesc::DOMElement*> XmlDocument::elementsNamed(const std::wstring& name) const {
    std::vector<xercesc::DOMElement*> found;
    for (const auto& placed : parser->placedElements())
        if (detail::fromXmlText(placed.element->getNodeName()) == name) found.push_back(placed.element);
    return found;
}

std::uint64_t XmlDocument::lineOf(const xercesc::DOMNode& element) const {
    const auto& elements = parser->placedElements();
    const auto place = std::find_if(elements.begin(), elements.end(),
                                    [&](const auto& placed) { return placed.element == &element; });
    return place == elements.end() ? 0 : place->line;
}

}  // namespace quarn
