/// \file
/// OBJ screens from text that nobody vouches for.
#pragma once

#include <cstdint>
#include <memory>

#include <QuarnScreen/OBJScreen.h>

#include "Base/ProgressLine.h"
#include "ObjSource.h"
#include "ObjValidation.h"

namespace quarn {

/// Where a mesh comes from.
struct MeshSource {
    ObjText text;  ///< Of the text that the screen keeps.
    ObjContents contents;
    ObjFrame frame;
};

/// A loaded mesh.
struct ObjMesh {
    std::shared_ptr<OBJScreen> screen;
    MeshSource source;
};

/// Loads a text. It is looked through first, so that what the library cannot load is an error that names the line; see
/// examineObj() and refuseLargeUvIndex(). Where it can be mended, the error says how.
/// \param clock is told what is done
[[nodiscard]] ObjMesh loadObj(ObjSource source, std::uint64_t maxMemory, StageClock& clock);

}  // namespace quarn
