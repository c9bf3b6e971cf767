/// \file
/// Area of ruled surfaces.
#pragma once

namespace quarn {

/// A ruled surface between two arcs over one chord, both in horizontal planes.
struct RuledShape {
    double width = 0.0;  ///< Length of the chord.
    double height = 0.0;
    double topArc = 0.0;  ///< In radians, between 0 and a full turn.
    double bottomArc = 0.0;

    [[nodiscard]] double topRadius() const;
    [[nodiscard]] double bottomRadius() const;
};

/// Returns the area of the surface. There is no closed form unless both arcs are equal. The numeric
/// integral is accurate to about 1e-9 of the area if the height is at least a thousandth of the
/// width.
[[nodiscard]] double ruledAreaOf(const RuledShape& shape);

}  // namespace quarn
