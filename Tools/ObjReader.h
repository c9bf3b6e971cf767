/// \file
/// OBJ screens from text that nobody vouches for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <QuarnScreen/OBJScreen.h>

#include "ObjContents.h"
#include "ScreenFile.h"
#include "XmlDocument.h"

namespace quarn {

/// How the frame of an OBJ text lies in that of the screen.
struct ObjFrame {
    std::string forward = "Y";  ///< Axis that becomes +Y.
    std::string upward = "Z";   ///< Axis that becomes +Z.
    float scale = 1.0F;
};

/// What the options of a command say about that; nothing where an option is not given.
struct ObjOptions {
    std::optional<std::string> forward = {};
    std::optional<std::string> upward = {};
    std::optional<float> scale = {};
};

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

/// Loads the text of a file. It is looked through first, so that what the library cannot load is an error that names
/// the line; see examineObj().
[[nodiscard]] ObjMesh loadObj(ScreenFile file, const ObjOptions& options, std::uint64_t maxMemory);

/// Loads the ScreenGeometry element of an OBJ screen. Lines in errors are those of the OBJ text in it.
[[nodiscard]] ObjMesh loadObjElement(const std::string& path, const XmlDocument& document,
                                     xercesc::DOMElement& element, std::uint64_t maxMemory);

/// Stops where a factor of positions is not finite as a float, or nothing.
[[nodiscard]] float objScaleFrom(const std::string& name, const std::string& text);

}  // namespace quarn
