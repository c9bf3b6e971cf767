/// \file
/// Upper bounds of the memory that a mesh needs.
#pragma once

#include <cstdint>
#include <string>

namespace quarn {

/// Bytes of memory for each byte of a text: the text twice, and lists that are reserved for its
/// size.
inline constexpr std::uint64_t kMeshMemoryPerByte = 3;

/// The sizes that determine the memory of a mesh.
struct MeshSize {
    std::uint64_t textBytes = 0;
    std::uint64_t triangles = 0;
};

/// Returns an upper bound of the bytes that a mesh needs while its screen is built and reported.
[[nodiscard]] std::uint64_t meshMemoryOf(const MeshSize& size);

/// Returns the maximum number of triangles for which meshMemoryOf() is within \p maxMemory; 0 if
/// the text alone exceeds it.
[[nodiscard]] std::uint64_t maxTriangleCount(std::uint64_t textBytes, std::uint64_t maxMemory);

/// Throws an Error if a mesh could need more than \p maxMemory bytes.
/// \param name name of its text in the error
void refuseMeshAbove(std::uint64_t maxMemory, const std::string& name, const MeshSize& size);

}  // namespace quarn
