#include "SvgWriter.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include <Common/Detail/Assert.h>
#include <Common/TextConversion.h>
#include <QuarnKit/Base/PrintableText.h>

namespace quarn {

namespace {

constexpr std::int64_t kMillionthsPerTenth = 100000;

// XML parsers reject these two code points, which are no characters.
bool isNoncharacter(wchar_t character) {
    return character == 0xFFFE || character == 0xFFFF;
}

std::string attribute(std::string_view name, std::string_view value) {
    return " " + std::string(name) + "=\"" + std::string(value) + "\"";
}

std::string numberAttribute(std::string_view name, double value) {
    return attribute(name, svgNumber(value));
}

// Returns twice the signed area of a polygon.
double twiceAreaOf(const std::vector<PagePoint>& points) {
    double sum = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const PagePoint& next = points[(i + 1) % points.size()];
        sum += points[i][0] * next[1] - points[i][1] * next[0];
    }
    return sum;
}

std::vector<PagePoint> reversed(const std::vector<PagePoint>& points) {
    return {points.rbegin(), points.rend()};
}

std::string_view anchorName(TextAnchor anchor) {
    switch (anchor) {
        case TextAnchor::Middle:
            return "middle";
        case TextAnchor::End:
            return "end";
        case TextAnchor::Start:
            break;
    }
    return "start";
}

}  // namespace

std::string svgNumber(double value) {
    QUARN_ASSERT(std::abs(value) < 1e9);
    // A tie such as 0.25 may have become 0.2499999999. Rounding to millionths restores it; ties
    // round up.
    const std::int64_t shifted = std::llround(value * 1e6) + kMillionthsPerTenth / 2;
    std::int64_t tenths = shifted / kMillionthsPerTenth;
    if (shifted % kMillionthsPerTenth < 0) --tenths;  // division truncates towards zero

    const std::int64_t magnitude = std::abs(tenths);
    std::string text = tenths < 0 ? "-" : "";
    text += std::to_string(magnitude / 10);
    if (magnitude % 10 != 0) text += "." + std::to_string(magnitude % 10);
    return text;
}

std::string svgText(std::string_view text) {
    std::wstring result;
    for (const wchar_t character : fromUtf8(printable(text))) {
        switch (character) {
            case L'&':
                result += L"&amp;";
                break;
            case L'<':
                result += L"&lt;";
                break;
            case L'>':
                result += L"&gt;";
                break;
            case L'"':
                result += L"&quot;";
                break;
            default:
                result += isNoncharacter(character) ? L'\uFFFD' : character;
        }
    }
    return toUtf8(result);
}

SvgWriter::SvgWriter(double width, double height, std::string_view title, std::string_view styleSheet,
                     std::string_view definitions) {
    document = R"(<?xml version="1.0" encoding="UTF-8"?>)"
               "\n";
    document += R"(<svg xmlns="http://www.w3.org/2000/svg")" + numberAttribute("width", width) +
                numberAttribute("height", height) +
                attribute("viewBox", "0 0 " + svgNumber(width) + " " + svgNumber(height)) + ">\n";
    document += "<title>" + svgText(title) + "</title>\n";
    document += "<style>\n" + std::string(styleSheet) + "</style>\n";
    if (!definitions.empty()) document += "<defs>\n" + std::string(definitions) + "</defs>\n";
}

void SvgWriter::line(std::string_view styleClass, const std::vector<PagePoint>& points) {
    extendPath(styleClass, points, "");
}

void SvgWriter::area(std::string_view styleClass, const std::vector<PagePoint>& points,
                     const std::vector<std::vector<PagePoint>>& holes) {
    // Two areas of one path with opposite orientations would cancel in their overlap; a hole has
    // the opposite orientation of its area.
    extendPath(styleClass, twiceAreaOf(points) < 0.0 ? reversed(points) : points, "z");
    for (const std::vector<PagePoint>& hole : holes)
        extendPath(styleClass, twiceAreaOf(hole) > 0.0 ? reversed(hole) : hole, "z");
}

void SvgWriter::extendPath(std::string_view styleClass, const std::vector<PagePoint>& points,
                           std::string_view closing) {
    if (points.empty()) return;
    if (pathClass != styleClass) {
        endPath();
        pathClass = styleClass;
        classes.emplace(styleClass);
    }
    char separator = 'M';  // positions after the first one are lines without a command letter
    for (const PagePoint& point : points) {
        pathData += separator;
        pathData += svgNumber(point[0]) + " " + svgNumber(point[1]);
        separator = ' ';
    }
    pathData += closing;
}

void SvgWriter::endPath() {
    if (!pathData.empty()) {
        addElement("path", pathClass);
        document += attribute("d", pathData) + "/>\n";
    }
    pathData.clear();
    pathClass.clear();
}

void SvgWriter::addElement(std::string_view element, std::string_view styleClass) {
    document += "<" + std::string(element) + attribute("class", styleClass);
    classes.emplace(styleClass);
}

void SvgWriter::circle(std::string_view styleClass, const PagePoint& center, double radius) {
    endPath();
    addElement("circle", styleClass);
    document += numberAttribute("cx", center[0]) + numberAttribute("cy", center[1]) +
                numberAttribute("r", radius) + "/>\n";
}

void SvgWriter::rectangle(std::string_view styleClass, const PagePoint& corner, double width, double height) {
    endPath();
    addElement("rect", styleClass);
    document += numberAttribute("x", corner[0]) + numberAttribute("y", corner[1]) +
                numberAttribute("width", width) + numberAttribute("height", height) + "/>\n";
}

void SvgWriter::text(std::string_view styleClass, const PagePoint& at, std::string_view text,
                     TextAnchor anchor, double rotation) {
    endPath();
    addElement("text", styleClass);
    document += numberAttribute("x", at[0]) + numberAttribute("y", at[1]);
    if (anchor != TextAnchor::Start) document += attribute("text-anchor", anchorName(anchor));
    if (rotation != 0.0)
        document += attribute("transform", "rotate(" + svgNumber(rotation) + " " + svgNumber(at[0]) + " " +
                                               svgNumber(at[1]) + ")");
    document += ">" + svgText(text) + "</text>\n";
}

std::string SvgWriter::finish() {
    endPath();
    return document + "</svg>\n";
}

}  // namespace quarn
