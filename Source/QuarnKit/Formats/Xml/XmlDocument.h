/// \file
/// Parses XML documents of untrusted files.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>
#include <xercesc/dom/DOMElement.hpp>

namespace quarn {

/// A parsed document.
///
/// Throws an Error with the file and the line for a document type, for more than 64 levels of
/// elements, and for a file that could need more memory than allowed. Opens no other file.
class XmlDocument {
public:
    /// Upper bound of the bytes that parsing needs for each byte of a document without elements.
    static constexpr std::uint64_t kMemoryPerByte = 12;

    /// Parses \p text, the bytes of the file \p path.
    XmlDocument(const std::string& path, const std::string& text, std::uint64_t maxMemory);
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;
    ~XmlDocument();

    /// Returns the elements \p name, in the order of the document.
    [[nodiscard]] std::vector<xercesc::DOMElement*> elementsNamed(const std::wstring& name) const;

    /// Returns the line on which the start tag of an element of this document ends.
    [[nodiscard]] std::uint64_t lineOf(const xercesc::DOMNode& element) const;

private:
    class Parser;

    std::unique_ptr<Parser> parser;
};

}  // namespace quarn
