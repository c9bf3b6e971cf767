/// \file
/// Pictures as SVG text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn {

/// A position on the page in pixels: x to the right, y downwards.
using PagePoint = Point<double, 2>;

enum class TextAnchor { Start, Middle, End };

/// A coordinate with at most one decimal, the same whatever the locale.
///
/// A number that a computation gave with other last bits has the same text, so that pictures keep their bytes
/// from compiler to compiler.
/// \pre finite and below 1e9 in magnitude
[[nodiscard]] std::string svgNumber(double value);

/// Text for the inside of an element or attribute. Whatever the bytes are, the result is well-formed:
/// characters that a reader could not see are told as escapes like \x1b, bytes that are not UTF-8 as U+FFFD.
[[nodiscard]] std::string svgText(std::string_view text);

/// Builds one document. Shapes that follow each other with the same class share one element.
///
/// Classes are names of the style sheet; every other text is escaped here. Not safe on several threads.
class SvgWriter {
public:
    /// \param styleSheet CSS without references to anything outside of the document
    SvgWriter(double width, double height, std::string_view title, std::string_view styleSheet);

    void line(std::string_view styleClass, const std::vector<PagePoint>& points);
    void area(std::string_view styleClass, const std::vector<PagePoint>& points);
    void circle(std::string_view styleClass, const PagePoint& center, double radius);
    void rectangle(std::string_view styleClass, const PagePoint& corner, double width, double height);
    /// \param rotation angle in degrees, clockwise
    void text(std::string_view styleClass, const PagePoint& at, std::string_view text,
              TextAnchor anchor = TextAnchor::Start, double rotation = 0.0);

    /// The whole document; nothing may follow.
    [[nodiscard]] std::string finish();

private:
    void extendPath(std::string_view styleClass, const std::vector<PagePoint>& points,
                    std::string_view closing);
    void endPath();

    std::string document;
    std::string pathClass;
    std::string pathData;  // empty where no path is open
};

}  // namespace quarn
