/// \file
/// The files that the tool writes screens to.
#pragma once

#include <cstdint>
#include <string>

#include "GridMesh.h"
#include "ScreenReader.h"

namespace quarn {

/// What \p path is to hold by the end of its name; \p fallback where that tells nothing.
[[nodiscard]] ScreenFormat formatByName(const std::string& path, ScreenFormat fallback);

/// The XML document of a screen.
[[nodiscard]] std::string xmlTextOf(IScreenGeometry& screen);

/// The OBJ text of a screen, which loads with no options. That of an OBJ screen is its own text, with its lines joined
/// as they were, but where its axes or scale tell fallback; then its positions are those in the screen's frame. A shape becomes a mesh.
/// \param grid of that mesh
/// \param maxMemory a mesh that could need more is refused
[[nodiscard]] std::string objTextOf(const Screen& screen, const GridSize& grid, std::uint64_t maxMemory);

/// Says on standard error where UV does not work on the mesh of a text that was made.
/// \param path what the line calls the text
/// \param screen that the text was made of
void noteMeshStatus(const std::string& path, const Screen& screen, const std::string& objText,
                    std::uint64_t maxMemory, Observer& observer);

/// Loads a text that was made of no screen, and says the same. \return its screen
[[nodiscard]] std::shared_ptr<OBJScreen> loadGeneratedText(const std::string& path,
                                                           const std::string& objText,
                                                           std::uint64_t maxMemory, Observer& observer);

}  // namespace quarn
