/// \file
/// Text of numbers in log messages.
#pragma once

#include <locale>
#include <sstream>
#include <string>

#include <QuarnScreen/Point.h>

namespace quarn::detail {

/// Returns the text that a stream of the classic locale writes for a number.
[[nodiscard]] inline std::string logText(double number) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << number;
    return text.str();
}

/// Returns the text of a position as (x,y,z), or of a UV as (u,v).
template <std::size_t N, class Indices>
[[nodiscard]] std::string logText(const Point<double, N, Indices>& point) {
    std::string text = "(";
    for (std::size_t i = 0; i < N; ++i) text += (i == 0 ? "" : ",") + logText(point[i]);
    return text + ")";
}

}  // namespace quarn::detail
