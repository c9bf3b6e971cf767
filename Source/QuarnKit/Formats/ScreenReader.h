/// \file
/// Screens from files.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QuarnKit/Formats/Obj/ObjLoader.h>
#include <QuarnKit/Formats/Xml/ScreenTags.h>
#include <QuarnScreen/IScreenGeometry.h>

namespace quarn {

/// A screen with what its file says about it.
struct Screen {
    std::string file;
    std::shared_ptr<IScreenGeometry> geometry;
    std::vector<Parameter> parameters = {};
    std::optional<MeshSource> mesh =
        {};  ///< Of a mesh; that of an STL screen tells the number of triangles alone.
};

/// The text of a mesh, of which nothing has been made yet.
struct MeshText {
    ScreenFormat format = ScreenFormat::Obj;  ///< Obj or Stl.
    ObjSource source;
};

/// Reads the text of an OBJ or STL file, or that of the first screen of an XML file. Nothing for screens of other types.
/// \param objOptions they are an error where the file is XML
[[nodiscard]] std::optional<MeshText> readMeshText(const std::string& path, std::uint64_t maxMemory,
                                                   const ObjOptions& objOptions, Observer& observer);

/// Reads the screen of an OBJ or STL file, or the first screen of an XML file.
///
/// All is checked before the screen gets it, as the screen would take text that is no number for 0, or not come to an
/// end.
/// \param objOptions they are an error where the file is no OBJ file
/// \param prepare may change the text of an OBJ screen before it is loaded. Where it is given, the mesh of an STL file
///        becomes an OBJ screen, whatever form the file has
[[nodiscard]] Screen readScreen(const std::string& path, std::uint64_t maxMemory,
                                const ObjOptions& objOptions, Observer& observer,
                                const std::function<void(ObjSource&)>& prepare = {});

}  // namespace quarn
