/// \file
/// Helpers that repair texts and load them.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include <QuarnScreen/OBJScreen.h>

#include <QuarnKit/Formats/Obj/Repair/ObjRepairer.h>

namespace quarn::test {

[[nodiscard]] inline std::string repairedText(const std::string& text) {
    return repairObj("a.obj", text).text;
}

/// All repairs as words, counts and first lines.
[[nodiscard]] inline std::vector<std::string> repairsOf(const std::string& text) {
    std::vector<std::string> words;
    for (const ObjRepairs::Tally& tally : repairObj("a.obj", text).repairs.tallies())
        words.push_back(repairName(tally.repair) + " " + std::to_string(tally.count) + " from " +
                        std::to_string(tally.firstLine));
    return words;
}

/// The triangles that \p screen loads from a text.
[[nodiscard]] inline std::vector<Triangle> loadTriangles(OBJScreen& screen, const std::string& text) {
    std::istringstream stream(text);
    screen.deserialize(stream);
    std::vector<Triangle> triangles;
    screen.getTesselation(triangles);
    return triangles;
}

}  // namespace quarn::test
