/// \file
/// The mesh of a file, for a check.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QuarnKit/Base/Observer.h>
#include <QuarnKit/Formats/Obj/ObjSource.h>

#include "Finding.h"

namespace quarn {

/// A mesh that no screen has been made of, so that nothing is indexed yet.
struct CheckInput {
    std::string repairedText;           ///< OBJ text of the mesh in the form that the library loads.
    std::vector<Finding> textFindings;  ///< What had to be mended for that.
    detail::ObjData objData;
    std::vector<Triangle> triangles;
    std::vector<std::uint64_t> lines;  ///< Line of each triangle's face; none for STL.
    bool canHaveUV = true;

    [[nodiscard]] CheckedMesh mesh() const { return {objData, triangles, lines, canHaveUV}; }
};

/// Whether readCheckInput() builds the repaired text of an STL file, which fails at numbers that are not finite.
enum class RepairedText { Skip, Build };

/// Reads the mesh of an OBJ or STL file of any program, or of such a screen in an XML file. Stops where there is none.
/// \param repairedText of an STL file; that of an OBJ text is always built
[[nodiscard]] CheckInput readCheckInput(const std::string& path, const ObjOptions& options,
                                        std::uint64_t maxMemory, RepairedText repairedText,
                                        Observer& observer);

}  // namespace quarn
