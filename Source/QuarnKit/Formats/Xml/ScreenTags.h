/// \file
/// The types of analytic screens in a file, and the numbers that define each of them.
#pragma once

#include <string>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn {

enum class ParameterKind { Length, Angle, Position };

/// A number or a position that defines a screen.
struct Parameter {
    std::string name;
    double value = 0.0;  ///< A length in the screen's unit, or an angle in radians.
    ParameterKind kind = ParameterKind::Length;
    Point<double, 3> position = {};  ///< Instead of the value, for a position.
    std::string label = {};          ///< The name in words, such as "min theta".
};

/// A tag of a screen's element.
struct ScreenTag {
    std::wstring tag;
    std::string parameter;
    std::string label;
    ParameterKind kind = ParameterKind::Length;
};

/// Condition for the difference of two limits.
enum class RangeRule {
    Section,    ///< Any difference; UV cannot be computed for zero, and is ambiguous above a full turn.
    Elevation,  ///< As Section, and UV is ambiguous beyond the poles.
    Arc,        ///< An arc over a chord: above 0 and below a full circle.
};

/// Two related limits, by the names of their parameters.
struct AngleRange {
    std::string label;
    std::string min;
    std::string max;
    RangeRule rule = RangeRule::Section;
};

struct ScreenType {
    std::string name;
    std::vector<ScreenTag> tags;  ///< In the order of the file.
    std::vector<AngleRange> ranges;
};

/// Returns the types of analytic screens.
[[nodiscard]] const std::vector<ScreenType>& screenTypes();

/// Returns the type \p name; null if it is unknown.
[[nodiscard]] const ScreenType* findScreenType(const std::string& name);

}  // namespace quarn
