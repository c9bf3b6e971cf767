/// \file
/// Placement of labels with little overlap.
#pragma once

#include <string>
#include <vector>

#include "SvgWriter.h"

namespace quarn {

/// A rectangle on the page.
struct Box {
    PagePoint corner;  ///< Upper left.
    double width = 0.0;
    double height = 0.0;

    [[nodiscard]] PagePoint middle() const { return corner + PagePoint(width, height) * 0.5; }
    [[nodiscard]] bool contains(const PagePoint& point) const;
    [[nodiscard]] bool overlaps(const Box& other) const;
};

/// Estimates the width of a label in pixels, for a wide font.
[[nodiscard]] double labelWidth(const std::string& text);

/// The position where a label's text starts, ends or has its middle.
struct LabelPlace {
    PagePoint at;
    TextAnchor anchor = TextAnchor::Start;
};

/// Finds a place for one label after the other. Not safe on several threads.
class LabelPlacer {
public:
    explicit LabelPlacer(const Box& labeledBox) : box(labeledBox) {}

    /// Add what labels should not cover.
    void avoidArea(std::vector<PagePoint> corners) { areas.push_back(std::move(corners)); }
    void avoidLine(const PagePoint& from, const PagePoint& to);
    void avoidBox(const Box& taken) { boxes.push_back(taken); }

    /// Returns the best place next to \p point; later labels avoid it. Among places of equal cost,
    /// prefers above for a point in the upper half of \p drawing, below for one in the lower half,
    /// and inwards.
    [[nodiscard]] LabelPlace place(const PagePoint& point, const std::string& text, const Box& drawing);

private:
    [[nodiscard]] int cost(const Box& label) const;

    Box box;
    std::vector<std::vector<PagePoint>> areas;
    std::vector<PagePoint> points;
    std::vector<Box> boxes;
};

}  // namespace quarn
