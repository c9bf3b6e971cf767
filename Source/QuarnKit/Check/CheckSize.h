/// \file
/// The finding about an implausible size.
#pragma once

#include <string>
#include <vector>

#include "Finding.h"

namespace quarn {

/// Appends a finding if the diagonal of the bounds is not plausible, see isPlausibleSize().
/// \param unit unit of lengths; an unknown one counts as meters
void checkSize(const CheckedMesh& mesh, const std::string& unit, std::vector<Finding>& findings);

}  // namespace quarn
