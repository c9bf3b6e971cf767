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

/// Returns the OBJ text of a screen, which loads without options. For an OBJ screen with default
/// axes and scale this is its own text, with the continued lines of the file. With other axes or
/// another scale, its positions are those in the frame of the screen. An analytic screen becomes a
/// mesh.
/// \param grid grid of the mesh of an analytic screen
/// \param vDirection direction of v in the mesh of an analytic screen; that of the screen is
///        downward
/// \param maxMemory a mesh that could need more is an Error
/// \throws Error if an analytic screen has no area, or the grid is below minGridSizeOf()
[[nodiscard]] std::string objTextOf(const Screen& screen, const GridSize& grid, VDirection vDirection,
                                    std::uint64_t maxMemory);

/// Notifies the observer if UV does not work on the mesh of a written text.
/// \param path name of the text in the notice
/// \param screen screen of the text
void noteMeshStatus(const std::string& path, const Screen& screen, const std::string& objText,
                    std::uint64_t maxMemory, Observer& observer);

/// Loads a text that was generated from triangles, notifies as noteMeshStatus(), and returns its
/// screen.
[[nodiscard]] std::shared_ptr<OBJScreen> loadGeneratedText(const std::string& path,
                                                           const std::string& objText,
                                                           std::uint64_t maxMemory, Observer& observer);

}  // namespace quarn
