#include "ScreenFile.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <QuarnKit/Base/ByteOrderMarks.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/InputStream.h>
#include <QuarnKit/Base/MemoryLimit.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Formats/Obj/MeshMemory.h>
#include <QuarnKit/Formats/Stl/StlLayout.h>
#include <QuarnKit/Formats/Xml/XmlDocument.h>

namespace quarn {

namespace {

constexpr const char* kExpectedFile = "the XML, OBJ or STL file of a screen";
// Bytes at the start of a file that determine its format.
constexpr std::size_t kReadSize = 1U << 20U;

bool beginsWithKeyword(std::string_view line) {
    constexpr std::array<std::string_view, 10> kKeywords = {"#", "v",      "vt",     "vn", "f",
                                                            "o", "mtllib", "usemtl", "g",  "s"};
    const std::string_view word = line.substr(0, line.find_first_of(" \t\r"));
    return word.starts_with('#') || std::find(kKeywords.begin(), kKeywords.end(), word) != kKeywords.end();
}

ScreenFormat formatOf(std::string_view text) {
    // UTF-16 may be XML. Any other text in it is refused as an OBJ text.
    if (isMarkedUtf16(text))
        return text.substr(0, 4).find('<') == std::string_view::npos ? ScreenFormat::Obj : ScreenFormat::Xml;
    if (text.starts_with(kUtf8Mark)) text.remove_prefix(kUtf8Mark.size());
    if (trimmed(text).starts_with('<')) return ScreenFormat::Xml;
    if (beginsLikeStl(text)) return ScreenFormat::Stl;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        if (beginsWithKeyword(trimmed(text.substr(0, end)))) return ScreenFormat::Obj;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return ScreenFormat::Xml;
}

std::uint64_t maxTextBytes(ScreenFormat format, std::uint64_t maxMemory) {
    return maxMemory / (format == ScreenFormat::Xml ? XmlDocument::kMemoryPerByte : kMeshMemoryPerByte);
}

}  // namespace

ScreenFile readScreenFile(const std::string& path, std::uint64_t maxMemory) {
    InputStream input(path, kExpectedFile);
    ScreenFile file{.path = path, .text = {}};
    std::uint64_t limit = kReadSize;
    for (;;) {
        const std::size_t length = file.text.size();
        file.text.resize(length + std::min<std::uint64_t>(kReadSize, limit + 1 - length));
        const std::size_t count = input.read(file.text.data() + length, file.text.size() - length);
        file.text.resize(length + count);
        if (length == 0) {
            file.format = formatOf(file.text);
            limit = maxTextBytes(file.format, maxMemory);
        }
        if (count == 0) break;
        if (file.text.size() > limit)
            throw Error({.found = "found a document that may need more than " + memorySizeText(maxMemory) +
                                  " of memory",
                         .expected = "a smaller one",
                         .file = path,
                         .remedy = {.kind = RemedyKind::RaiseMemoryLimit}});
    }
    if (file.text.empty()) throw Error({.found = "an empty file", .expected = kExpectedFile, .file = path});
    return file;
}

}  // namespace quarn
