/// \file
/// Repairs the text of a mesh before it is loaded.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QuarnKit/Base/Observer.h>

#include "MeshText.h"

namespace quarn {

/// Defects of one kind that were repaired in the text of a mesh.
struct MeshRepair {
    std::string name;         ///< A stable word, as for a finding.
    std::string text;         ///< The defects in words, such as "12 numbers with a plus sign".
    std::uint64_t count = 1;  ///< Number of the defects.
    std::uint64_t line = 0;   ///< Line of the first one; 0 for the text as a whole.
};

/// Repairs a text so that the library loads it, see repairObj(). An STL text of any form becomes an
/// OBJ text, see objTextOfStl(); the observer receives their notices. Throws an Error for a text
/// that cannot be repaired.
[[nodiscard]] std::vector<MeshRepair> repairMesh(MeshText& text, Observer& observer);

/// Notifies of each repair.
/// \param name name of the text
void noteRepairs(const std::string& name, const std::vector<MeshRepair>& repairs, Observer& observer);

}  // namespace quarn
