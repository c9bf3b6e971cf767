/// \file
/// Computes normals for faces of an OBJ text that have none.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <QuarnKit/Base/UniqueRecords.h>

namespace quarn {

/// The normals that are added to a text, each of them once.
class ObjFaceNormals {
public:
    /// \param objPositions positions of the text's vertices; have to outlive the object
    /// \param countBefore number of normals that the text contains
    ObjFaceNormals(const std::vector<std::array<float, 3>>& objPositions, std::uint64_t countBefore)
        : positions(objPositions), count(countBefore), numbers(addedNormals) {}

    /// Returns the number from 1 of the normal of a polygon, on the side from which its corners are
    /// counterclockwise.
    /// \param vertices numbers from 1
    [[nodiscard]] std::uint64_t numberFor(const std::vector<std::uint64_t>& vertices);

    /// Returns the number of normals that numberFor() added.
    [[nodiscard]] std::uint64_t addedCount() const { return addedNormals.size(); }
    /// Returns their lines.
    [[nodiscard]] std::string lines() const;

private:
    const std::vector<std::array<float, 3>>& positions;
    std::uint64_t count;
    std::vector<std::array<float, 3>> addedNormals;
    UniqueRecords<3> numbers;
};

}  // namespace quarn
