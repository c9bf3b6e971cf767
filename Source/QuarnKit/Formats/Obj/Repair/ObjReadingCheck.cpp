#include "ObjReadingCheck.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/Obj/ObjSourceText.h>
#include <QuarnScreen/Detail/Obj/ObjNumbers.h>
#include <QuarnScreen/Detail/Obj/ObjText.h>

#include "ObjLogicalLines.h"
#include "ObjRepairer.h"

namespace quarn {

namespace {

// References of more digits may be too large for the library, which wraps them.
constexpr std::size_t kMaxReferenceDigits = 9;
constexpr std::size_t kMaxSlashes = 2;  // of a corner

bool endsLine(const char* p) {
    return *p == '\n' || *p == '\0' || (*p == '\r' && p[1] == '\n');
}

// Returns true if a face line has only blanks and corners of a usual form.
bool isPlainFace(const char* p) {
    std::size_t digits = 0;
    std::size_t slashes = 0;
    for (; !endsLine(p); ++p) {
        digits = detail::digitOf(*p) <= 9 ? digits + 1 : 0;
        if (*p == ' ') slashes = 0;
        if (*p == '/') ++slashes;
        if (digits > kMaxReferenceDigits || slashes > kMaxSlashes) return false;
        if (digits == 0 && *p != ' ' && *p != '/') return false;
    }
    return true;
}

// Returns true if the keyword of a line means the same to the library and to other programs.
bool isPlainKeyword(const char* p) {
    if (*p == 'f') return p[1] == ' ' && isPlainFace(p + 1);
    if (*p == 'v') {
        const char* const next = p[1] == 't' || p[1] == 'n' ? p + 2 : p + 1;
        return *next == ' ' || (next == p + 1 && !isObjSpace(*next));
    }
    constexpr char kMarkByte = '\xEF';
    return *p != kMarkByte && (!isObjSpace(*p) || *p == '\0');
}

// A lone carriage return and a NUL end a line for one reader only, and a backslash joins lines of
// one kind only.
bool hasUnusualLineEnds(std::string_view text) {
    if (text.find('\0') != std::string_view::npos || text.find("\\\n") != std::string_view::npos ||
        text.find("\\\r") != std::string_view::npos)
        return true;
    for (std::size_t i = text.find('\r'); i != std::string_view::npos; i = text.find('\r', i + 1))
        if (i + 1 == text.size() || text[i + 1] != '\n') return true;
    return false;
}

bool isPlain(std::string_view text) {
    if (hasUnusualLineEnds(text)) return false;
    bool isPlainSoFar = true;
    forEachObjLine(text, [&](const char* line) { isPlainSoFar = isPlainSoFar && isPlainKeyword(line); });
    return isPlainSoFar;
}

// Returns true if both have the same data, apart from how faces are divided.
bool haveSameData(const detail::ObjData& a, const detail::ObjData& b) {
    return a.vertexData.vertices == b.vertexData.vertices &&
           a.vertexData.textureCoordinates == b.vertexData.textureCoordinates &&
           a.faces.size() == b.faces.size();
}

// Returns the first repair that changes the mesh; nothing if there is none.
std::optional<ObjRepairs::Tally> firstChange(const RepairedObj& repaired, const detail::ObjData& objData) {
    const auto tallies = repaired.repairs.tallies();
    const auto isOfConcaveFace = [](const ObjRepairs::Tally& tally) {
        return tally.repair == ObjRepair::ConcaveFace;
    };
    const bool hasConcaveFace = std::any_of(tallies.begin(), tallies.end(), isOfConcaveFace);
    if (hasConcaveFace && repaired.objData && haveSameData(*repaired.objData, objData)) return {};
    const auto change = std::find_if_not(tallies.begin(), tallies.end(), isOfConcaveFace);
    if (change == tallies.end()) return {};
    return *change;
}

}  // namespace

void requireSameReading(const std::string& name, const std::string& objText, const detail::ObjData& objData) {
    if (isPlain(objText)) return;
    const auto change = firstChange(repairObj(name, objText), objData);
    if (change)
        throw Error({.found = "found " + repairText(*change),
                     .expected = "a text of which no line is misread or skipped",
                     .file = name,
                     .line = change->firstLine});
}

}  // namespace quarn
