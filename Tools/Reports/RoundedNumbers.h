/// \file
/// Numbers of a report for people.
#pragma once

#include <cstddef>
#include <string>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnScreen/Point.h>

namespace quarn::tool {

/// Formats numbers with a limited count of significant digits.
struct RoundedNumbers {
    int digits;        ///< From 1 to 17.
    std::string unit;  ///< Unit of lengths.

    [[nodiscard]] std::string number(double value) const { return roundedNumberText(value, digits); }
    /// Returns the number with the unit.
    [[nodiscard]] std::string length(double value) const { return number(value) + " " + unit; }
    /// Returns the coordinates in parentheses.
    template <std::size_t N, class Indices>
    [[nodiscard]] std::string point(const Point<double, N, Indices>& value) const {
        std::string text;
        for (std::size_t i = 0; i < N; ++i) text += (i == 0 ? "(" : ", ") + number(value[i]);
        return text + ")";
    }
    /// Returns the coordinates in parentheses, and the unit.
    [[nodiscard]] std::string position(const Point<double, 3>& value) const {
        return point(value) + " " + unit;
    }
};

}  // namespace quarn::tool
