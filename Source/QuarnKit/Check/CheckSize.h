/// \file
/// The finding about a size that no screen has.
#pragma once

#include <string>
#include <vector>

#include "Finding.h"

namespace quarn {

/// Appends a finding where the diagonal of the bounds is below a centimetre or above a kilometre.
/// \param unit of lengths
void checkSize(const CheckedMesh& mesh, const std::string& unit, std::vector<Finding>& findings);

}  // namespace quarn
