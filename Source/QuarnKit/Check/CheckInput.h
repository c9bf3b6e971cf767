/// \file
/// Reads the mesh of a file for a check.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QuarnKit/Base/Observer.h>
#include <QuarnKit/Formats/Obj/ObjSource.h>

#include "Finding.h"

namespace quarn {

/// A mesh of which no screen is built, so that nothing is indexed.
struct CheckInput {
    std::string repairedText;           ///< OBJ text of the mesh that the library loads.
    std::vector<Finding> textFindings;  ///< The repairs of the text, and faces that have none.
    detail::ObjData objData;
    std::vector<Triangle> triangles;
    std::vector<std::uint64_t> lines;  ///< Line of each triangle's face; none for STL.
    bool canHaveUV = true;
    std::string file = {};

    [[nodiscard]] CheckedMesh mesh() const { return {objData, triangles, lines, canHaveUV, file}; }
};

/// Says if readCheckInput() builds the repaired text of an STL file, which fails for numbers that
/// are not finite.
enum class RepairedText { Skip, Build };

/// Reads the mesh of an OBJ or STL file of any program, or of such a screen in an XML file. Throws
/// an Error if the file has no mesh.
/// \param repairedText applies to an STL file; the repaired text of an OBJ file is always built
[[nodiscard]] CheckInput readCheckInput(const std::string& path, const ObjOptions& options,
                                        std::uint64_t maxMemory, RepairedText repairedText,
                                        Observer& observer);

}  // namespace quarn
