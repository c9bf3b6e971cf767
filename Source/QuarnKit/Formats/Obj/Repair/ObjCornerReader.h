/// \file
/// Reads the corners of faces in the OBJ text of any program.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ObjPrescan.h"
#include "ObjRepairs.h"

namespace quarn {

/// Numbers from 1 to which a corner refers; 0 for no reference.
struct ObjCornerIndices {
    std::uint64_t vertex = 0;
    std::uint64_t uv = 0;
    std::uint64_t normal = 0;
    bool isPlain = true;  ///< True if the library reads these numbers from the text of the corner.
};

/// Returns the number from 1 of the vertex to which a corner refers; 0 if it has no such form, or
/// counts back too far.
/// \param vertexCount number of the vertices before the corner, from which relative numbers count
[[nodiscard]] std::uint64_t vertexNumberOf(std::string_view corner, std::uint64_t vertexCount);

/// Reads corners in the order of their text, since relative numbers count from their line.
class ObjCornerReader {
public:
    /// \param objName name of the text in error messages
    /// \param textPrescan, textRepairs have to outlive the object
    ObjCornerReader(std::string objName, const ObjPrescan& textPrescan, ObjRepairs& textRepairs)
        : name(std::move(objName)), prescan(textPrescan), repairs(textRepairs) {}

    /// Counts a line of a vertex, UV or normal.
    void countLine(ObjLineKind kind);

    /// Reads a corner such as 1/2/3, 1//3, 1 or -1/-1/-1.
    ///
    /// Adds to the repairs. Throws an Error if the form of the corner is unknown, or if it refers
    /// to a vertex that does not exist.
    [[nodiscard]] ObjCornerIndices read(std::string_view corner, std::uint64_t line);

private:
    [[nodiscard]] std::uint64_t uvOf(std::string_view part, std::uint64_t number, std::uint64_t line);
    [[nodiscard]] std::uint64_t normalOf(std::string_view part, std::uint64_t number, std::uint64_t line);

    std::string name;
    const ObjPrescan& prescan;
    ObjRepairs& repairs;
    std::uint64_t vertexCount = 0;
    std::uint64_t uvCount = 0;
    std::uint64_t normalCount = 0;
};

}  // namespace quarn
