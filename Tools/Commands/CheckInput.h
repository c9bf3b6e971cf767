/// \file
/// The mesh of a file, for a check.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Check/Finding.h"
#include "ObjSource.h"

namespace quarn {

/// A mesh that no screen has been made of, so that nothing is indexed yet.
struct CheckInput {
    std::string mendedText;             ///< The file's OBJ text in the form that the library loads.
    std::vector<Finding> textFindings;  ///< What had to be mended for that.
    ObjLists lists;
    std::vector<Triangle> triangles;
    std::vector<std::uint64_t> lines;  ///< Line of each triangle's face.

    [[nodiscard]] CheckedMesh mesh() const { return {lists, triangles, lines}; }
};

/// Reads the mesh of an OBJ file of any program, or of the OBJ screen in an XML file. Stops where the file is neither.
[[nodiscard]] CheckInput readCheckInput(const std::string& path, const ObjOptions& options,
                                        std::uint64_t maxMemory);

}  // namespace quarn
