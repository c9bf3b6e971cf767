/// \file
/// Places for labels where they cover as little as possible.
#pragma once

#include <string>
#include <vector>

#include "SvgWriter.h"

namespace quarn {

/// A part of the page.
struct Box {
    PagePoint corner;  ///< Upper left.
    double width = 0.0;
    double height = 0.0;

    [[nodiscard]] PagePoint middle() const { return corner + PagePoint(width, height) * 0.5; }
    [[nodiscard]] bool contains(const PagePoint& point) const;
    [[nodiscard]] bool overlaps(const Box& other) const;
};

/// About how wide a label is. Fonts differ; this is one of the wide ones.
[[nodiscard]] double labelWidth(const std::string& text);

/// Where a label's text begins, ends or has its middle.
struct LabelPlace {
    PagePoint at;
    TextAnchor anchor = TextAnchor::Start;
};

/// Finds a place for one label after the other.
class LabelPlacer {
public:
    explicit LabelPlacer(const Box& labeledBox) : box(labeledBox) {}

    /// Says what labels should not cover.
    void avoidArea(std::vector<PagePoint> corners) { areas.push_back(std::move(corners)); }
    void avoidLine(const PagePoint& from, const PagePoint& to);
    void avoidBox(const Box& taken) { boxes.push_back(taken); }

    /// The best place beside \p point, which later labels avoid. Among equal ones those are better that lie
    /// above a point in the upper half of \p drawing, below one in the lower half, and inwards.
    [[nodiscard]] LabelPlace place(const PagePoint& point, const std::string& text, const Box& drawing);

private:
    [[nodiscard]] int cost(const Box& label) const;

    Box box;
    std::vector<std::vector<PagePoint>> areas;
    std::vector<PagePoint> points;
    std::vector<Box> boxes;
};

}  // namespace quarn
