#include "ObjRepairs.h"

#include <QuarnKit/Mesh/EarClipping.h>

namespace quarn {

namespace {

struct Wording {
    const char* name;
    const char* singular;
    const char* plural;
};

constexpr std::array<Wording, static_cast<std::size_t>(ObjRepair::Count)> kWordings = {{
    {"byte-order-mark", "byte order mark", "byte order marks"},
    {"odd-separator", "line with tabs or other unusual separators",
     "lines with tabs or other unusual separators"},
    {"line-end", "line that ends with a carriage return alone",
     "lines that end with a carriage return alone"},
    {"final-line-feed", "face line without a line feed", "face lines without a line feed"},
    {"joined-line", "data line continued on the next line", "data lines continued on the next line"},
    {"trailing-comment", "comment after a face", "comments after faces"},
    {"plus-sign", "number with a plus sign", "numbers with a plus sign"},
    {"relative-reference", "corner that refers back by a negative number",
     "corners that refer back by negative numbers"},
    {"corner-form", "corner with an extra slash", "corners with an extra slash"},
    {"short-face", "face of fewer than three corners", "faces of fewer than three corners"},
    {"concave-face", "concave face whose triangles overlap", "concave faces whose triangles overlap"},
    {"unknown-line", "line with an unknown keyword that would be misread",
     "lines with unknown keywords that would be misread"},
    {"final-backslash", "name or comment that would absorb the next line",
     "names or comments that would absorb the next line"},
    {"unreadable-uv", "UV that is no number", "UVs that are no numbers"},
    {"bad-uv-reference", "corner that refers to a UV that does not exist",
     "corners that refer to UVs that do not exist"},
    {"bad-normal-reference", "corner that refers to a normal that does not exist",
     "corners that refer to normals that do not exist"},
    {"missing-normal", "corner without a normal", "corners without a normal"},
}};

const Wording& wordingOf(ObjRepair repair) {
    return kWordings.at(static_cast<std::size_t>(repair));
}

}  // namespace

void ObjRepairs::note(ObjRepair repair, std::uint64_t line) {
    Entry& entry = entries.at(static_cast<std::size_t>(repair));
    if (entry.count++ == 0) entry.firstLine = line;
}

std::vector<ObjRepairs::Tally> ObjRepairs::tallies() const {
    std::vector<Tally> result;
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (entries.at(i).count > 0)
            result.push_back({static_cast<ObjRepair>(i), entries.at(i).count, entries.at(i).firstLine});
    return result;
}

std::string repairName(ObjRepair repair) {
    return wordingOf(repair).name;
}

std::string repairText(const ObjRepairs::Tally& tally) {
    const Wording& wording = wordingOf(tally.repair);
    return std::to_string(tally.count) + " " + (tally.count == 1 ? wording.singular : wording.plural);
}

std::string selfIntersectionText(std::uint64_t faceCount) {
    return std::to_string(faceCount) + (faceCount == 1 ? " face" : " faces") +
           " whose triangles overlap, because edges cross or there are more than " +
           std::to_string(kMaxClippedCorners) + " corners";
}

}  // namespace quarn
