/// \file
/// The corners of faces in an OBJ text from whatever program.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ObjPrescan.h"
#include "ObjRepairs.h"

namespace quarn {

/// Numbers from 1 of what a corner refers to; 0 for what it does not.
struct ObjCornerIndices {
    std::uint64_t vertex = 0;
    std::uint64_t uv = 0;
    std::uint64_t normal = 0;
    bool isPlain = true;  ///< Whether the library reads the text of the corner as this.
};

/// Reads corners in the order of their text, as relative numbers count from the line that holds them.
class ObjCornerReader {
public:
    /// \param objName what error lines call the text
    /// \param textPrescan of the text; it has to outlive the object, as have the \p textRepairs
    ObjCornerReader(std::string objName, const ObjPrescan& textPrescan, ObjRepairs& textRepairs)
        : name(std::move(objName)), prescan(textPrescan), repairs(textRepairs) {}

    /// Counts a line of a vertex, UV or normal.
    void countLine(ObjLineKind kind);

    /// Reads a corner such as 1/2/3, 1//3, 1 or -1/-1/-1.
    ///
    /// Notes what is to be mended. Stops with a Error where the corner has no form that is known, or refers to a vertex that is not there.
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
