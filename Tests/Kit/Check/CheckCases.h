/// \file
/// Checks of meshes that tests build.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include <QuarnKit/Check/MeshCheck.h>
#include "Support/Mesh/Meshes.h"

namespace quarn::test {

/// Returns the line of the face of a triangle, counted from 1, in the meshes of these tests.
inline std::uint64_t lineOfTriangle(std::uint64_t triangle) {
    return 100 + triangle;
}

/// Returns all findings of a mesh in meters whose file has no other data.
inline std::vector<Finding> check(const Mesh& mesh, const std::string& unit = "m") {
    std::vector<std::uint64_t> lines;
    for (std::uint64_t i = 1; i <= mesh.size(); ++i) lines.push_back(lineOfTriangle(i));
    return checkMesh({.objData = {}, .triangles = mesh, .lines = lines}, unit);
}

inline std::vector<std::string> namesOf(const std::vector<Finding>& findings) {
    std::vector<std::string> names;
    for (const Finding& finding : findings) names.push_back(finding.name);
    return names;
}

/// Returns the finding with a name; an empty one if there is none.
inline Finding findingNamed(const std::string& name, const std::vector<Finding>& findings) {
    const auto found = std::find_if(findings.begin(), findings.end(),
                                    [&](const Finding& finding) { return finding.name == name; });
    return found == findings.end() ? Finding() : *found;
}

/// Returns the numbers of the triangles of a finding.
inline std::vector<std::uint64_t> trianglesOf(const Finding& finding) {
    std::vector<std::uint64_t> numbers;
    for (const Place& place : finding.places) numbers.push_back(place.triangle);
    return numbers;
}

inline void flipWinding(Triangle& triangle) {
    std::swap(triangle.vertices[1], triangle.vertices[2]);
    computeFields(triangle);
}

}  // namespace quarn::test
