#include "FileKind.h"

#include <algorithm>
#include <array>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Formats/OutputName.h>
#include <QuarnKit/Formats/Stl/StlLayout.h>
#include <QuarnKit/Formats/Stl/StlPlausibility.h>

#include "TextLines.h"

namespace quarn {

namespace {

enum class Content { Text, Bytes };

constexpr ForeignKind kUnknownStl = {"a file that contains no STL", ""};

bool isObjKeyword(std::string_view word) {
    constexpr std::array<std::string_view, 9> kKeywords = {"v", "vt",     "vn",     "f", "o",
                                                           "g", "mtllib", "usemtl", "s"};
    return std::find(kKeywords.begin(), kKeywords.end(), word) != kKeywords.end();
}

// In binary data, some line begins with a letter that is a keyword.
bool isObj(std::string_view text, Content content) {
    if (content == Content::Bytes) return isObjKeyword(firstTextWord(firstDataLine(text)));
    bool hasComment = false;
    bool hasOther = false;
    while (!text.empty()) {
        const std::string_view line = trimmed(takeTextLine(text));
        if (isObjKeyword(firstTextWord(line))) return true;
        hasComment = hasComment || line.starts_with('#');
        hasOther = hasOther || (!line.empty() && !line.starts_with('#'));
    }
    return hasComment && !hasOther;
}

bool isMaterialLibrary(std::string_view text) {
    return firstTextWord(firstDataLine(text)) == "newmtl";
}

bool hasDeclaredSize(std::string_view bytes) {
    const auto layout = stlLayoutOf(bytes);
    return layout && layout->declaredCount > 0 &&
           layout->recordCount == static_cast<std::uint64_t>(layout->declaredCount);
}

bool isBinaryStlFile(std::string_view bytes, FileExtent extent, const std::string& extension) {
    return hasPlausibleCorners(bytes) &&
           (extension == "stl" || extent == FileExtent::Beginning || hasDeclaredSize(bytes));
}

// Returns the kind of a file that is named as STL and contains nothing that is known. A file that
// is too short for a triangle may have been cut off.
FileKind kindOfNamedStl(std::string_view bytes, Content content) {
    const auto layout = stlLayoutOf(bytes);
    const bool hasRecord = layout && layout->recordCount > 0;
    return content == Content::Text || hasRecord ? FileKind(kUnknownStl) : ScreenFormat::Stl;
}

FileKind kindByName(std::string_view bytes, const std::string& extension, Content content) {
    if (extension == "xml") return ScreenFormat::Xml;
    if (extension == "obj") return ScreenFormat::Obj;
    if (extension == "stl") return kindOfNamedStl(bytes, content);
    if (extension == "csv") return ForeignKind{"a CSV file", ""};
    return content == Content::Text ? ForeignKind{"a text of an unknown kind", ""}
                                    : ForeignKind{"binary data of an unknown kind", ""};
}

}  // namespace

FileKind fileKindOf(std::string_view bytes, std::string_view text, FileExtent extent,
                    const std::string& path) {
    if (const auto kind = foreignKindOfBytes(bytes)) return *kind;
    if (trimmed(text).starts_with('<')) {
        const auto kind = foreignKindOfXml(text);
        return kind ? FileKind(*kind) : ScreenFormat::Xml;
    }
    const std::string extension = extensionOf(path);
    const Content content = isTextLike(text) ? Content::Text : Content::Bytes;
    if (content == Content::Text && beginsWithSolid(text)) return ScreenFormat::Stl;
    if (const auto kind = foreignKindOfText(text)) return *kind;
    if (content == Content::Bytes && isBinaryStlFile(bytes, extent, extension)) return ScreenFormat::Stl;
    if (isObj(text, content)) return ScreenFormat::Obj;
    if (isMaterialLibrary(text)) return ForeignKind{"a material library", "read the OBJ file that names it"};
    if (const auto kind = foreignKindOfTable(text)) return *kind;
    return kindByName(bytes, extension, content);
}

}  // namespace quarn
