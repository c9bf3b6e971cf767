#include "Rows/HitRows.h"

namespace quarn::tool {

std::vector<Column> hitColumns(const std::string& number, const Column& last) {
    return {{number},
            {"status"},
            {"x", Quantity::Length},
            {"y", Quantity::Length},
            {"z", Quantity::Length},
            {"u"},
            {"v"},
            {"side"},
            {"triangle"},
            last};
}

HitRow hitRow(std::int64_t number, const Intersection& hit, double last, std::string_view status) {
    const auto triangle = hit.triangleIndex >= 0 ? Cell(std::int64_t{hit.triangleIndex}) : Cell();
    const bool hasUV = hit.uv != kNoUV;
    return {number,
            status,
            hit.point[0],
            hit.point[1],
            hit.point[2],
            hasUV ? Cell(hit.uv[0]) : Cell(),
            hasUV ? Cell(hit.uv[1]) : Cell(),
            std::int64_t{hit.normalSign},
            triangle,
            last};
}

HitRow missRow(std::int64_t number, std::string_view status) {
    HitRow cells;
    cells[0] = number;
    cells[1] = status;
    return cells;
}

}  // namespace quarn::tool
