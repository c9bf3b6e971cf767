/// \file
/// Loads OBJ screens from untrusted text.
#pragma once

#include <cstdint>
#include <memory>

#include <QuarnKit/Base/Observer.h>
#include <QuarnKit/Formats/Obj/ObjSource.h>
#include <QuarnKit/Formats/Obj/ObjSourceText.h>
#include <QuarnKit/Formats/Obj/ObjValidation.h>
#include <QuarnScreen/OBJScreen.h>

namespace quarn {

/// The text that a mesh was loaded from.
struct MeshSource {
    ObjSourceText text;  ///< Refers to the text that the screen stores.
    ObjCounts counts;
    ObjFrame frame;
    Point<double, 3> origin = {};  ///< What was subtracted from the positions of the file.
};

/// A loaded mesh.
struct ObjMesh {
    std::shared_ptr<OBJScreen> screen;
    MeshSource source;
};

/// Loads a text. Throws an Error, with the line if there is one, for a text that the library cannot
/// load, see parseValidObj(), requireValidReferences() and refuseLargeUvIndex(). If the text can be
/// repaired, the error has that remedy.
/// \param observer receives the stages
[[nodiscard]] ObjMesh loadObj(ObjSource source, std::uint64_t maxMemory, Observer& observer);

}  // namespace quarn
