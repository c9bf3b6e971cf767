#include "ForeignKind.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>

#include <QuarnKit/Base/NumberText.h>

#include "TextLines.h"

namespace quarn {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kExport = "export it as OBJ from the program that made it";
constexpr std::string_view kUnpack = "unpack it and read the OBJ or STL file in it";
constexpr std::string_view kTriangulate = "build a mesh from the points and export it as OBJ";
constexpr std::string_view kDownload = "download the file that it links to";

struct Signature {
    std::string_view bytes;
    ForeignKind kind;
};

constexpr std::array kBinarySignatures = {
    Signature{"\x89PNG\r\n"sv, {"a PNG picture", ""}},
    Signature{"\xFF\xD8\xFF"sv, {"a JPEG picture", ""}},
    Signature{"GIF8"sv, {"a GIF picture", ""}},
    Signature{"II*\0"sv, {"a TIFF picture", ""}},
    Signature{"MM\0*"sv, {"a TIFF picture", ""}},
    Signature{"\x76\x2F\x31\x01"sv, {"an OpenEXR picture", ""}},
    Signature{"%PDF-"sv, {"a PDF document", ""}},
    Signature{"\x1F\x8B"sv, {"a gzip archive", kUnpack}},
    Signature{"BZh"sv, {"a bzip2 archive", kUnpack}},
    Signature{"\xFD"
              "7zXZ\0"sv,
              {"an xz archive", kUnpack}},
    Signature{"7z\xBC\xAF\x27\x1C"sv, {"a 7z archive", kUnpack}},
    Signature{"\x28\xB5\x2F\xFD"sv, {"a zstd archive", kUnpack}},
    Signature{"Rar!\x1A\x07"sv, {"a RAR archive", kUnpack}},
    Signature{"\x7F"
              "ELF"sv,
              {"an ELF program or library", ""}},
    Signature{"\xCF\xFA\xED\xFE"sv, {"a Mach-O program or library", ""}},
    Signature{"\xCA\xFE\xBA\xBE"sv, {"a Mach-O program or a Java class", ""}},
    Signature{"SQLite format 3\0"sv, {"an SQLite database", ""}},
    Signature{"glTF"sv, {"a binary glTF file", kExport}},
    Signature{"Kaydara FBX Binary"sv, {"an FBX file", kExport}},
    Signature{"AutoCAD Binary DXF"sv, {"a DXF file", kExport}},
    Signature{"AC10"sv, {"a DWG drawing", kExport}},
    Signature{"BLENDER"sv, {"a Blender file", kExport}},
    Signature{"PXR-USDC"sv, {"a USD file", kExport}},
    Signature{"3D Geometry File Format"sv, {"a 3DM file", kExport}},
    Signature{"\xFF\xFE\xFF\x0E"sv, {"a SketchUp file", kExport}},
};

constexpr std::array kTextSignatures = {
    Signature{"; FBX"sv, {"an FBX file", kExport}},
    Signature{"#VRML"sv, {"a VRML file", kExport}},
    Signature{"#usda"sv, {"a USD file", kExport}},
    Signature{"#?RADIANCE"sv, {"a Radiance picture", ""}},
    Signature{"#!/"sv, {"a script", ""}},
    Signature{"ISO-10303-21"sv, {"a STEP file", kExport}},
    Signature{R"({\rtf)"sv, {"an RTF document", ""}},
    Signature{"%!PS"sv, {"a PostScript document", ""}},
    Signature{"version https://git-lfs"sv, {"a pointer to a file in Git LFS", "fetch it with git lfs pull"}},
};

// First lines of texts, or first words of them.
constexpr std::array kFirstWords = {
    Signature{"ply"sv, {"a PLY mesh", kExport}},     Signature{"OFF"sv, {"an OFF mesh", kExport}},
    Signature{"COFF"sv, {"an OFF mesh", kExport}},   Signature{"NOFF"sv, {"an OFF mesh", kExport}},
    Signature{"CNOFF"sv, {"an OFF mesh", kExport}},  Signature{"STOFF"sv, {"an OFF mesh", kExport}},
    Signature{"STNOFF"sv, {"an OFF mesh", kExport}},
};

constexpr std::array kRootElements = {
    Signature{"html"sv, {"a web page", kDownload}},      Signature{"svg"sv, {"an SVG picture", ""}},
    Signature{"collada"sv, {"a COLLADA file", kExport}}, Signature{"x3d"sv, {"an X3D file", kExport}},
    Signature{"amf"sv, {"an AMF mesh", kExport}},        Signature{"kml"sv, {"a KML file", ""}},
};

std::optional<ForeignKind> findPrefix(std::span<const Signature> signatures, std::string_view text) {
    const auto found = std::find_if(signatures.begin(), signatures.end(), [&](const Signature& signature) {
        return text.starts_with(signature.bytes);
    });
    return found == signatures.end() ? std::nullopt : std::optional(found->kind);
}

std::optional<ForeignKind> findWord(std::span<const Signature> signatures, std::string_view word) {
    const auto found = std::find_if(signatures.begin(), signatures.end(), [&](const Signature& signature) {
        return isSameWord(word, signature.bytes);
    });
    return found == signatures.end() ? std::nullopt : std::optional(found->kind);
}

// The names of the packed files appear uncompressed.
std::optional<ForeignKind> kindOfZip(std::string_view beginning) {
    if (!beginning.starts_with("PK\x03\x04") && !beginning.starts_with("PK\x05\x06")) return {};
    if (beginning.find("3D/3dmodel.model") != std::string_view::npos)
        return ForeignKind{"a 3MF mesh", kExport};
    return ForeignKind{"a zip archive", kUnpack};
}

// A file may begin with "MZ" by chance. That of a program refers to its second header.
bool isWindowsProgram(std::string_view beginning) {
    constexpr std::size_t kOffset = 0x3C;
    std::uint32_t header = 0;
    if (!beginning.starts_with("MZ") || beginning.size() < kOffset + sizeof header) return false;
    std::memcpy(&header, beginning.data() + kOffset, sizeof header);
    return header < beginning.size() && beginning.substr(header).starts_with("PE\0\0"sv);
}

std::optional<ForeignKind> kindOfJson(std::string_view text) {
    if (!text.starts_with('{') && !text.starts_with('[')) return {};
    const auto contains = [&](std::string_view name) { return text.find(name) != std::string_view::npos; };
    if (contains("\"asset\"") && (contains("\"meshes\"") || contains("\"buffers\"") || contains("\"nodes\"")))
        return ForeignKind{"a glTF file", kExport};
    return ForeignKind{"a JSON document", ""};
}

// Pairs of lines: the number 0 and the word SECTION, after comments with the number 999.
bool isDxf(std::string_view text) {
    std::string_view code = trimmed(takeTextLine(text));
    while (code == "999") {
        takeTextLine(text);
        code = trimmed(takeTextLine(text));
    }
    return code == "0" && trimmed(takeTextLine(text)) == "SECTION";
}

// Returns the number of cells of a line; 0 if one of them does not begin as a number. Decimal
// commas are possible.
std::size_t countNumbers(std::string_view line, std::string_view separators) {
    std::size_t count = 0;
    while (!line.empty()) {
        const std::size_t end = std::min(line.find_first_of(separators), line.size());
        const std::string_view cell = trimmed(line.substr(0, end));
        line.remove_prefix(std::min(end + 1, line.size()));
        if (cell.empty()) continue;
        if (cell.find_first_of("0123456789+-.") != 0) return 0;
        ++count;
    }
    return count;
}

}  // namespace

std::optional<ForeignKind> foreignKindOfBytes(std::string_view beginning) {
    if (isWindowsProgram(beginning)) return ForeignKind{"a Windows program or library", ""};
    if (auto zip = kindOfZip(beginning)) return zip;
    return findPrefix(kBinarySignatures, beginning);
}

std::optional<ForeignKind> foreignKindOfText(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    if (auto kind = findPrefix(kTextSignatures, text)) return kind;
    std::string_view rest = text;
    if (auto kind = findWord(kFirstWords, firstTextWord(takeTextLine(rest)))) return kind;
    if (isDxf(text)) return ForeignKind{"a DXF file", kExport};
    return kindOfJson(text);
}

std::optional<ForeignKind> foreignKindOfXml(std::string_view text) {
    constexpr std::string_view kDoctype = "<!doctype";
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        const std::string_view tag = text.substr(at);
        if (isSameWord(tag.substr(0, kDoctype.size()), kDoctype))
            return isSameWord(firstTextWord(trimmed(tag.substr(kDoctype.size())), " \t\r\n>["), "html")
                       ? std::optional(ForeignKind{"a web page", kDownload})
                       : std::nullopt;
        if (tag.starts_with("<!--")) at = std::min(text.find("-->", at), text.size());
        if (!tag.starts_with("<!") && !tag.starts_with("<?"))
            return findWord(kRootElements, firstTextWord(tag.substr(1), " \t\r\n>/"));
    }
    return {};
}

std::optional<ForeignKind> foreignKindOfTable(std::string_view text) {
    constexpr ForeignKind kCsv = {"a CSV file", ""};
    const std::string_view line = firstDataLine(text);
    if (line.empty()) return {};
    const std::string_view next =
        firstDataLine(text.substr(static_cast<std::size_t>(line.end() - text.begin())));
    const auto isTable = [&](std::string_view separator) {
        return line.find(separator) != std::string_view::npos &&
               (countNumbers(line, separator) >= 2 || countNumbers(next, separator) >= 2);
    };
    if (isTable(",") || isTable(";")) return kCsv;
    if (countNumbers(line, " \t") >= 2) return ForeignKind{"a list of points without faces", kTriangulate};
    if (isTable("\t")) return kCsv;
    return {};
}

}  // namespace quarn
