/// \file
/// Reads screens from files.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <QuarnKit/Formats/Xml/ScreenTags.h>
#include <QuarnScreen/IScreenGeometry.h>

#include "MeshRepair.h"
#include "MeshText.h"
#include "ObjLoader.h"

namespace quarn {

/// A screen and the contents of its file.
struct Screen {
    std::string file;
    std::shared_ptr<IScreenGeometry> geometry;
    std::vector<Parameter> parameters = {};
    /// Set for a mesh; that of an STL screen has only the number of triangles.
    std::optional<MeshSource> mesh = {};
    /// The repairs of the mesh, if the options required them.
    std::vector<MeshRepair> repairs = {};
};

/// Reads the text of an OBJ or STL file, or that of the first screen of an XML file. Returns
/// nothing for screens of other types. Repairs nothing.
/// \param objOptions a frame is an error if the file is XML, and objects are one for a screen
///         without an OBJ text
[[nodiscard]] std::optional<MeshText> readMeshText(const std::string& path, std::uint64_t maxMemory,
                                                   const ObjOptions& objOptions, Observer& observer);

/// Reads the screen of an OBJ or STL file, or the first screen of an XML file.
///
/// All values are checked before the screen gets them, since a screen reads text that is no number
/// as 0, and some values keep its queries from terminating.
/// The observer receives a notice of each repair, unless the mesh is refused nevertheless.
/// \param objOptions a frame is an error if the file is no OBJ file, except an STL file that is
///         repaired; objects are an error for a screen without an OBJ text
/// \param prepare may change the text of an OBJ screen before it is loaded, after the repairs
[[nodiscard]] Screen readScreen(const std::string& path, std::uint64_t maxMemory,
                                const ObjOptions& objOptions, Observer& observer,
                                const std::function<void(ObjSource&)>& prepare = {});

/// An OBJ mesh without indexes, or any other screen.
using UnindexedScreen = std::variant<UnindexedMesh, Screen>;

/// Reads as readScreen(), with the same errors and notices, and builds no index of an OBJ mesh. For
/// uses that need its triangles or its text alone.
[[nodiscard]] UnindexedScreen readUnindexedScreen(const std::string& path, std::uint64_t maxMemory,
                                                  const ObjOptions& objOptions, Observer& observer,
                                                  const std::function<void(ObjSource&)>& prepare = {});

}  // namespace quarn
