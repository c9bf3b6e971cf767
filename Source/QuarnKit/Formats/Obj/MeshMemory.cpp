#include "MeshMemory.h"

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/MemoryLimit.h>

namespace quarn {

namespace {

// A triangle needs 750 to 1000 bytes, measured with shared and unshared vertices and with fans; the
// rest is reserve.
constexpr std::uint64_t kMemoryPerTriangle = 1400;

}  // namespace

std::uint64_t meshMemoryOf(const MeshSize& size) {
    return size.textBytes * kMeshMemoryPerByte + size.triangles * kMemoryPerTriangle;
}

std::uint64_t maxTriangleCount(std::uint64_t textBytes, std::uint64_t maxMemory) {
    const std::uint64_t textMemory = meshMemoryOf({.textBytes = textBytes});
    return textMemory > maxMemory ? 0 : (maxMemory - textMemory) / kMemoryPerTriangle;
}

void refuseMeshAbove(std::uint64_t maxMemory, const std::string& name, const MeshSize& size) {
    const std::uint64_t need = meshMemoryOf(size);
    if (need > maxMemory)
        throw Error({.found = "found a mesh of " + std::to_string(size.triangles) +
                              " triangles, which may need " + memorySizeText(need) + " of memory and not " +
                              memorySizeText(maxMemory),
                     .expected = "a smaller one",
                     .file = name,
                     .remedy = {.kind = RemedyKind::RaiseMemoryLimit}});
}

}  // namespace quarn
