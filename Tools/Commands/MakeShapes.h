/// \file
/// The kinds of screens that the command make knows, and their options.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/Units.h>
#include <QuarnKit/Formats/ScreenBuilder.h>
#include <QuarnKit/Formats/Xml/ScreenTags.h>

namespace quarn::tool {

/// The values of a shape's options. Each parser throws an Error that names the option if its value
/// is not valid.
/// \pre the option is given, except for has()
class ShapeTexts {
public:
    std::string unit = "m";                         ///< Unit of the results.
    std::map<std::string, std::string> texts = {};  ///< By the name of the option.

    [[nodiscard]] bool has(const std::string& option) const { return texts.contains(option); }
    /// Parses a length above 0.
    [[nodiscard]] double length(const std::string& option) const;
    [[nodiscard]] Angle angle(const std::string& option) const;
    /// Parses an angle above 0 and up to a full turn.
    [[nodiscard]] Angle angleOfSection(const std::string& option) const;
    [[nodiscard]] Point<double, 3> position(const std::string& option) const;
    /// Returns the error for an option with another value than expected.
    [[nodiscard]] Error unexpected(const std::string& option, const std::string& expected) const;

private:
    void refuseOutOfRange(const std::string& option, double number, ParameterKind kind) const;
};

struct ShapeOption {
    std::string name;
    std::string description;
    std::string valueName = "LENGTH";
    bool isRequired = true;

    [[nodiscard]] bool isLength() const { return valueName == "LENGTH"; }
};

/// A kind of screen.
struct Shape {
    std::string name;
    std::string description;
    std::string example;
    std::string screenType;
    std::vector<ShapeOption> options;
    /// Converts the options to the parameters of the screen.
    void (*fill)(const ShapeTexts& options, ScreenValues& values);
};

/// Returns all kinds of screens.
[[nodiscard]] const std::vector<Shape>& shapes();

}  // namespace quarn::tool
