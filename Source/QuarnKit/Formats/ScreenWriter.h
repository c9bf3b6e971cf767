/// \file
/// Writes screens as text.
#pragma once

#include <cstdint>
#include <string>

#include <QuarnKit/Formats/Obj/VDirection.h>

#include "GridMesh.h"
#include "ScreenReader.h"

namespace quarn {

/// Returns the format by the extension of \p path; \p fallback for an unknown one.
[[nodiscard]] ScreenFormat formatByName(const std::string& path, ScreenFormat fallback);

/// Returns the XML document of a screen.
[[nodiscard]] std::string xmlTextOf(IScreenGeometry& screen);

/// Returns the OBJ text of a mesh as which an analytic screen is written. It loads without options.
/// \param grid grid of the mesh
/// \param vDirection direction of v in the mesh; that of the screen is downward
/// \param maxMemory a mesh that could need more is an Error
/// \throws Error if the screen has no area, or the grid is below minGridSizeOf()
[[nodiscard]] std::string objTextOf(const Screen& screen, const GridSize& grid, VDirection vDirection,
                                    std::uint64_t maxMemory);

/// Returns the OBJ text of a mesh, which loads without options. With default axes and scale this is
/// its own text, with the continued lines of the file. With other axes or another scale, its
/// positions are those in the frame of the screen, and a comment states how far the origin was
/// moved.
[[nodiscard]] std::string objTextOf(const UnindexedMesh& mesh);

/// Notifies the observer if UV does not work on the mesh of a written text.
/// \param path name of the text in the notice
/// \param objText objTextOf() the mesh
void noteMeshStatus(const std::string& path, const UnindexedMesh& mesh, const std::string& objText,
                    std::uint64_t maxMemory, Observer& observer);

/// Loads a text that was generated from triangles and notifies as noteMeshStatus(). Builds no
/// index.
/// \return the text
/// \throws Error if it does not load
std::string verifyGeneratedText(const std::string& path, std::string objText, std::uint64_t maxMemory,
                                Observer& observer);

/// Loads a text that was generated from triangles, notifies as noteMeshStatus(), and returns its
/// screen.
[[nodiscard]] std::shared_ptr<OBJScreen> loadGeneratedText(const std::string& path, std::string objText,
                                                           std::uint64_t maxMemory, Observer& observer);

}  // namespace quarn
