/// \file
/// The mesh of a file, for a check.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QuarnKit/Formats/Obj/ObjSource.h>

#include "Finding.h"

namespace quarn {

/// A mesh that no screen has been made of, so that nothing is indexed yet.
struct CheckInput {
    std::string mendedText;             ///< OBJ text of the mesh in the form that the library loads.
    std::vector<Finding> textFindings;  ///< What had to be mended for that.
    ObjLists lists;
    std::vector<Triangle> triangles;
    std::vector<std::uint64_t> lines;  ///< Line of each triangle's face; none for STL.
    bool canHaveUV = true;

    [[nodiscard]] CheckedMesh mesh() const { return {lists, triangles, lines, canHaveUV}; }
};

/// Reads the mesh of an OBJ or STL file of any program, or of such a screen in an XML file. Stops where there is none.
/// \param isMended whether the mended text of an STL file is wanted, too
[[nodiscard]] CheckInput readCheckInput(const std::string& path, const ObjOptions& options,
                                        std::uint64_t maxMemory, bool isMended);

}  // namespace quarn
