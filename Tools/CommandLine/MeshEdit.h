/// \file
/// Options, input and output of the commands that read a mesh, change it and write it.
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

/// Adds the argument FILE and the options, except those for the frame of an OBJ file. \p options
/// has to outlive the CommandLine.
void addMeshEditOptions(Command& command, MeshEditOptions& options);

/// True if the output's name ends with .xml; all other outputs are OBJ.
[[nodiscard]] bool writesXml(const MeshEditOptions& options);

/// Returns the mesh of a screen.
/// \throws Error if it is an analytic screen
[[nodiscard]] MeshScreen& meshOf(const Screen& screen);

/// The triangles of a mesh.
struct TriangleMesh {
    std::vector<Triangle> triangles;
    bool hasUV = false;  ///< As IScreenGeometry::hasParameterization().
};

/// Reads the triangles of the input. Builds no index of an OBJ mesh.
/// \throws Error if the input is an analytic screen
[[nodiscard]] TriangleMesh readTriangles(const MeshEditOptions& options);

/// Writes triangles as OBJ or XML. They are destroyed before their text is loaded for verification.
/// \param comment the first line of an OBJ text
/// \throws Error if the file cannot be written
void writeMesh(std::vector<Triangle> triangles, const std::string& comment, const MeshEditOptions& options);

}  // namespace quarn::tool
