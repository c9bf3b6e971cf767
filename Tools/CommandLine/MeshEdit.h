/// \file
/// What the commands share that read a mesh, change it and write it.
#pragma once

#include <string>
#include <vector>

#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnScreen/MeshScreen.h>

#include "CommandLine/Options.h"

namespace quarn::tool {

struct MeshEditOptions {
    std::string input;
    std::string output = "-";
    std::string unit = "m";
    ObjOptions obj;
    std::uint64_t maxMemory = defaultMemoryLimit();
};

/// Adds the argument FILE and the options, but those that say how an OBJ file lies in the world. \p options has to
/// outlive \p command.
void addMeshEditOptions(Command& command, MeshEditOptions& options);

/// Whether the output's name asks for XML; it is OBJ where the name tells nothing.
[[nodiscard]] bool writesXml(const MeshEditOptions& options);

/// The mesh of a screen. Stops where it has a shape instead.
[[nodiscard]] MeshScreen& meshOf(const Screen& screen);

/// Writes triangles as OBJ or XML.
/// \param comment the text's first line
void writeMesh(const std::vector<Triangle>& triangles, const std::string& comment,
               const MeshEditOptions& options);

}  // namespace quarn::tool
