/// \file
/// The types of screens that a file may hold, and the numbers that define each of them.
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
    Point<double, 3> position = {};  ///< Instead of the value, where it is a position.
    std::string label = {};          ///< The name in words, as in "min theta".
};

/// A tag of a screen's element.
struct ScreenTag {
    std::wstring tag;
    std::string parameter;
    std::string label;
    ParameterKind kind = ParameterKind::Length;
};

/// What the difference of two limits has to be.
enum class RangeRule {
    Section,  ///< Anything; of an empty one UV cannot be computed.
    Arc,      ///< An arc over a chord: above 0 and below a full circle.
};

/// Two limits that belong together, by the names of their parameters.
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

[[nodiscard]] const std::vector<ScreenType>& screenTypes();

/// The type called \p name; null where there is none.
[[nodiscard]] const ScreenType* findScreenType(const std::string& name);

}  // namespace quarn
