#include "ScreenFile.h"

#include <algorithm>
#include <string_view>

#include <QuarnKit/Base/ByteOrderMarks.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/InputStream.h>
#include <QuarnKit/Base/MemoryLimit.h>
#include <QuarnKit/Formats/Obj/MeshMemory.h>
#include <QuarnKit/Formats/Xml/XmlDocument.h>

#include "Kind/TextEncoding.h"

namespace quarn {

namespace {

constexpr const char* kExpectedFile = "the XML, OBJ or STL file of a screen";
// Bytes at the start of a file that determine its format.
constexpr std::size_t kReadSize = 1U << 20U;

// Appends up to \p size bytes of the input, which may arrive in smaller parts. Returns false at the
// end of the input.
bool readBytes(InputStream& input, std::uint64_t size, std::string& text) {
    while (size > 0) {
        const std::size_t length = text.size();
        text.resize(length + std::min<std::uint64_t>(kReadSize, size));
        const std::size_t count = input.read(text.data() + length, text.size() - length);
        text.resize(length + count);
        if (count == 0) return false;
        size -= count;
    }
    return true;
}

std::string textOf(std::string_view bytes, TextEncoding encoding) {
    if (encoding != TextEncoding::Bytes) return utf8FromUtf16(bytes, encoding);
    if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
    return std::string(bytes);
}

ScreenFormat requireScreenFormat(const FileKind& kind, const std::string& path) {
    const auto* const foreign = std::get_if<ForeignKind>(&kind);
    if (foreign == nullptr) return std::get<ScreenFormat>(kind);
    std::string expected = kExpectedFile;
    if (!foreign->remedy.empty()) expected += "; " + std::string(foreign->remedy);
    throw Error({.found = "found " + std::string(foreign->name), .expected = expected, .file = path});
}

std::uint64_t maxTextBytes(ScreenFormat format, std::uint64_t maxMemory) {
    return maxMemory / (format == ScreenFormat::Xml ? XmlDocument::kMemoryPerByte : kMeshMemoryPerByte);
}

}  // namespace

ScreenFile readScreenFile(const std::string& path, std::uint64_t maxMemory) {
    InputStream input(path, kExpectedFile);
    ScreenFile file{.path = path, .text = {}};
    const bool hasMore = readBytes(input, kReadSize, file.text);
    if (file.text.empty()) throw Error({.found = "an empty file", .expected = kExpectedFile, .file = path});
    const TextEncoding encoding = textEncodingOf(file.text);
    file.format = requireScreenFormat(fileKindOf(file.text, textOf(file.text, encoding),
                                                 hasMore ? FileExtent::Beginning : FileExtent::Whole, path),
                                      path);
    const std::uint64_t limit = maxTextBytes(file.format, maxMemory);
    // One more block, since the end of a file is found by a read after it.
    const auto fileRest = input.rest();
    if (hasMore && fileRest)
        file.text.reserve(std::min(limit, file.text.size() + fileRest->size) + kReadSize);
    const std::uint64_t rest = limit - std::min<std::uint64_t>(limit, file.text.size());
    if (file.text.size() > limit || (hasMore && readBytes(input, rest + 1, file.text)))
        throw Error(
            {.found = "found a document that may need more than " + memorySizeText(maxMemory) + " of memory",
             .expected = "a smaller one",
             .file = path,
             .remedy = {.kind = RemedyKind::RaiseMemoryLimit}});
    if (encoding != TextEncoding::Bytes && file.format != ScreenFormat::Xml)
        file.text = utf8FromUtf16(file.text, encoding);
    return file;
}

}  // namespace quarn
