/// \file
/// Pictures as SVG text.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn {

/// A position on the page in pixels: x to the right, y downwards.
using PagePoint = Point<double, 2>;

enum class TextAnchor { Start, Middle, End };

/// Formats a coordinate with at most one decimal, independent of the locale.
///
/// Numbers that differ in their last bits have the same text, so that the bytes of a picture do not
/// depend on the compiler.
/// \pre \p value is finite and below 1e9 in magnitude
[[nodiscard]] std::string svgNumber(double value);

/// Escapes text for the content of an element or attribute. The result is well-formed for any
/// bytes: invisible characters become escapes like \x1b, and bytes that are not UTF-8 become
/// U+FFFD.
[[nodiscard]] std::string svgText(std::string_view text);

/// Builds one document. Consecutive shapes of the same class share one element.
///
/// Classes are names of the style sheet. All other texts are escaped. Not safe on several threads.
class SvgWriter {
public:
    /// \param styleSheet CSS without external references
    /// \param definitions elements to which the style sheet refers
    SvgWriter(double width, double height, std::string_view title, std::string_view styleSheet,
              std::string_view definitions = {});

    void line(std::string_view styleClass, const std::vector<PagePoint>& points);
    void area(std::string_view styleClass, const std::vector<PagePoint>& points,
              const std::vector<std::vector<PagePoint>>& holes = {});
    void circle(std::string_view styleClass, const PagePoint& center, double radius);
    void rectangle(std::string_view styleClass, const PagePoint& corner, double width, double height);
    /// Adds a text.
    /// \param rotation angle in degrees, clockwise
    void text(std::string_view styleClass, const PagePoint& at, std::string_view text,
              TextAnchor anchor = TextAnchor::Start, double rotation = 0.0);

    /// Returns true if an element of the class has been added.
    [[nodiscard]] bool hasClass(std::string_view styleClass) const {
        return classes.find(styleClass) != classes.end();
    }

    /// Returns the whole document. Nothing may be added afterwards.
    [[nodiscard]] std::string finish();

private:
    void extendPath(std::string_view styleClass, const std::vector<PagePoint>& points,
                    std::string_view closing);
    void endPath();
    void addElement(std::string_view element, std::string_view styleClass);

    std::string document;
    std::set<std::string, std::less<>> classes;
    std::string pathClass;
    std::string pathData;  // empty if no path is open
};

}  // namespace quarn
