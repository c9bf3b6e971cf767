/// \file
/// What an OBJ text holds, looked through before the library reads it.
#pragma once

#include <cstdint>

#include "ObjText.h"

namespace quarn {

/// How many records of each kind a text holds.
struct ObjCounts {
    /// Lines and values that have no effect on the screen.
    struct Ignored {
        std::uint64_t materials = 0;          ///< Lines "usemtl".
        std::uint64_t materialLibraries = 0;  ///< Lines "mtllib".
        std::uint64_t groups = 0;             ///< Lines "g".
        std::uint64_t objects = 0;            ///< Lines "o".
        std::uint64_t smoothing = 0;          ///< Lines "s".
        std::uint64_t colors = 0;             ///< Lines "v" with three or more values behind the position.
        std::uint64_t weights = 0;            ///< Lines "v" with one or two values behind the position.
        std::uint64_t thirdUVs = 0;           ///< Lines "vt" with more than two values.
        std::uint64_t otherLines = 0;         ///< All other lines but comments and blank ones.
    };

    std::uint64_t vertices = 0;
    std::uint64_t uvs = 0;
    std::uint64_t normals = 0;
    std::uint64_t faces = 0;
    std::uint64_t triangles = 0;  ///< Those that the faces become.
    Ignored ignored = {};
};

/// A tenth of what a float holds, so that no rounding makes a number infinite. An infinite one becomes NaN in the
/// transform, and the outline of such a mesh does not close.
inline constexpr double kMaxObjNumber = 1e37;

/// Bytes of memory for each byte of a text: the text twice, and lists that are made for its size.
inline constexpr std::uint64_t kMeshMemoryPerByte = 3;

/// Upper bound of the bytes that a mesh needs while its screen is built and told of.
[[nodiscard]] std::uint64_t meshMemory(std::uint64_t textSize, std::uint64_t triangles);

/// Counts what a text holds.
///
/// Stops with a Error, which names the line, at what the library could not load or would not end for: a face line
/// without its line feed, numbers that are not finite as floats or would not be after the transform, no vertex, no
/// normal or no face.
/// \param scale factor of all positions
[[nodiscard]] ObjCounts validateObj(const ObjText& text, float scale);

/// Stops where the mesh of a text could need more than \p maxMemory bytes.
void refuseMeshAbove(std::uint64_t maxMemory, const std::string& name, std::uint64_t textSize,
                     std::uint64_t triangles);

}  // namespace quarn
