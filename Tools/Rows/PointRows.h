/// \file
/// Commands that answer a position or direction for each position of the input.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QuarnKit/Formats/ScreenReader.h>

#include "Rows/QueryResults.h"

namespace quarn {

struct PointOptions : QueryOptions {
    std::string points = "-";
};

/// Adds the arguments SCREEN and POINTS and the options. \p options has to outlive \p command.
void addPointOptions(CLI::App& command, PointOptions& options);

/// What a screen answers for a position; nothing where it has no answer.
using PointAnswer = std::optional<Point<double, 3>> (*)(const Screen& screen, const Point<double, 3>& point);

/// Writes a row for each position, with the status "found" or "none".
/// \param columns three, those of the answer
void answerPoints(const std::string& command, const std::vector<Column>& columns, const PointOptions& options,
                  PointAnswer answer);

}  // namespace quarn
