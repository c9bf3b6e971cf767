/// \file
/// Loads OBJ screens from untrusted text.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <QuarnKit/Base/Observer.h>
#include <QuarnKit/Formats/Obj/ObjSource.h>
#include <QuarnKit/Formats/Obj/ObjSourceText.h>
#include <QuarnKit/Formats/Obj/ObjValidation.h>
#include <QuarnScreen/OBJScreen.h>

namespace quarn {

/// The text that a mesh was loaded from.
struct MeshSource {
    ObjSourceText text;  ///< Refers to the text that the screen or UnindexedMesh stores.
    ObjCounts counts;
    ObjFrame frame;
    Point<double, 3> origin = {};  ///< What was subtracted from the positions of the file.
};

/// A loaded mesh.
struct ObjMesh {
    std::shared_ptr<OBJScreen> screen;
    MeshSource source;
};

/// A mesh as OBJScreen loads it, without the indexes for queries, which take most of the time and
/// memory of a screen.
struct UnindexedMesh {
    std::unique_ptr<std::string> text;  ///< With its continued lines joined.
    MeshSource source;                  ///< Refers to the text.
    std::vector<Triangle> triangles;
    OBJScreen::Status status = OBJScreen::StatusOk;  ///< Valid, see OBJScreen::isValid().

    /// Returns OBJScreen::hasParameterization() of the mesh.
    [[nodiscard]] bool hasUV() const {
        return status == OBJScreen::StatusOk || status == OBJScreen::StatusUvOutOfRange;
    }
};

/// Loads a text. Throws an Error, with the line if there is one, for a text that the library cannot
/// load, see parseValidObj(), requireValidReferences() and refuseLargeUvIndex(). If the text can be
/// repaired, the error has that remedy.
/// \param observer receives the stages
[[nodiscard]] ObjMesh loadObj(ObjSource source, std::uint64_t maxMemory, Observer& observer);

/// Loads a text and builds no index. Accepts and refuses the same texts as loadObj(), with the same
/// errors, and finds the same status. Logs the library's warning about several boundaries.
[[nodiscard]] UnindexedMesh loadUnindexedObj(ObjSource source, std::uint64_t maxMemory, Observer& observer);

}  // namespace quarn
