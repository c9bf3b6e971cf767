/// \file
/// OBJ screens from text that nobody vouches for.
#pragma once

#include <cstdint>
#include <memory>

#include <QuarnKit/Base/Observer.h>
#include <QuarnScreen/OBJScreen.h>

#include "ObjSource.h"
#include "ObjValidation.h"

namespace quarn {

/// Where a mesh comes from.
struct MeshSource {
    ObjText text;  ///< Of the text that the screen keeps.
    ObjCounts counts;
    ObjFrame frame;
};

/// A loaded mesh.
struct ObjMesh {
    std::shared_ptr<OBJScreen> screen;
    MeshSource source;
};

/// Loads a text. It is looked through first, so that what the library cannot load is an error that names the line; see
/// validateObj() and refuseLargeUvIndex(). Where it can be mended, the error says how.
/// \param observer receives the stages
[[nodiscard]] ObjMesh loadObj(ObjSource source, std::uint64_t maxMemory, Observer& observer);

}  // namespace quarn
