/// \file
/// Loads STL screens from untrusted files.
#pragma once

#include <cstdint>
#include <memory>

#include <QuarnKit/Formats/Obj/ObjSource.h>
#include <QuarnScreen/STLScreen.h>

namespace quarn {

struct StlMesh {
    std::shared_ptr<STLScreen> screen;
    std::uint64_t triangleCount = 0;
};

/// Loads a binary STL text into the library's screen. Throws an Error if the text has an StlDefect,
/// or if the mesh could need more than \p maxMemory bytes. The frame of the source has no effect.
[[nodiscard]] StlMesh loadStl(ObjSource source, std::uint64_t maxMemory);

}  // namespace quarn
