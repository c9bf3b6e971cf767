/// \file
/// Rows of the commands that sample a screen.
#pragma once

#include <cstdint>
#include <string>

#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnScreen/IScreenGeometry.h>

#include "Rows/QueryOptions.h"

namespace quarn::tool {

/// Throws an Error if \p count positions could need more memory than \p maxMemory bytes.
/// \param options the options that determine the count, with their values
void refuseManyPositions(const std::string& options, std::uint64_t count, std::uint64_t maxMemory);

/// Writes a row for each position, with the number of its polyline from 1.
void writePolylines(const std::string& command, const Screen& screen,
                    const IScreenGeometry::Polylines& polylines, const QueryOptions& options);

}  // namespace quarn::tool
