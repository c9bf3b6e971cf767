/// \file
/// Numbers in log messages.
#pragma once

#include <locale>
#include <sstream>
#include <string>

#include <QuarnScreen/Point.h>

namespace quarn::detail {

/// Text of a number as a log stream writes it, but in the classic locale.
[[nodiscard]] inline std::string logText(double number) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << number;
    return text.str();
}

/// A position as (x,y,z), a UV as (u,v).
template <std::size_t N, class Indices>
[[nodiscard]] std::string logText(const Point<double, N, Indices>& point) {
    std::string text = "(";
    for (std::size_t i = 0; i < N; ++i) text += (i == 0 ? "" : ",") + logText(point[i]);
    return text + ")";
}

}  // namespace quarn::detail
