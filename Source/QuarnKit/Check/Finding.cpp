#include "Finding.h"

namespace quarn {

Cases::Cases(const CheckedMesh& checkedMesh, const std::vector<bool>& isCase) : mesh(checkedMesh) {
    for (std::size_t i = 0; i < isCase.size(); ++i)
        if (isCase[i]) add(i);
}

Cases::Cases(const CheckedMesh& checkedMesh, std::span<const std::uint32_t> triangles) : mesh(checkedMesh) {
    for (const std::uint32_t triangle : triangles) add(triangle);
}

void Cases::add(std::size_t triangle) {
    ++caseCount;
    if (places.size() < kMaxPlaces)
        places.push_back({triangle + 1, triangle < mesh.lines.size() ? mesh.lines[triangle] : 0});
}

void addProblem(std::vector<Finding>& findings, const std::string& name, const Cases& cases,
                const std::string& text, const std::string& hint) {
    if (cases.count() == 0) return;
    findings.push_back({.name = name,
                        .count = cases.count(),
                        .places = cases.first(),
                        .text = counted(cases.count(), "triangle") + " " + text,
                        .hint = hint});
}

std::string counted(std::uint64_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace quarn
