#include "PlotLabels.h"

#include <algorithm>
#include <array>

#include <QuarnKit/Plot/Views/PlotViews.h>

namespace quarn {

namespace {

// In pixels.
constexpr double kCharacterWidth = 6.9;
constexpr double kCapHeight = 9.0;
constexpr double kGap = 8.0;         // above and below the point
constexpr double kInset = 5.0;       // left and right of it
constexpr double kLineSample = 4.0;  // between samples of a line to avoid

// Costs of a label. Covering part of the drawing is worse than a less preferred place. Covering
// another text or exceeding the panel is worse still.
constexpr int kAreaCost = 1;
constexpr int kPointCost = 1;
constexpr int kBoxCost = 30;
constexpr int kOutsideCost = 100;
// Samples of a label, along its width and its height.
constexpr int kSampleColumns = 7;
constexpr int kSampleRows = 3;

Box boxOf(const LabelPlace& place, double width) {
    double left = place.at[0];
    if (place.anchor == TextAnchor::Middle) left -= width / 2;
    if (place.anchor == TextAnchor::End) left -= width;
    return {.corner = PagePoint(left, place.at[1] - kCapHeight), .width = width, .height = kCapHeight};
}

}  // namespace

bool Box::contains(const PagePoint& point) const {
    return point[0] >= corner[0] && point[0] <= corner[0] + width && point[1] >= corner[1] &&
           point[1] <= corner[1] + height;
}

bool Box::overlaps(const Box& other) const {
    return corner[0] < other.corner[0] + other.width && other.corner[0] < corner[0] + width &&
           corner[1] < other.corner[1] + other.height && other.corner[1] < corner[1] + height;
}

double labelWidth(const std::string& text) {
    return static_cast<double>(text.size()) * kCharacterWidth;
}

void LabelPlacer::avoidLine(const PagePoint& from, const PagePoint& to) {
    const int steps = 1 + static_cast<int>(length(to - from) / kLineSample);
    for (int i = 0; i <= steps; ++i) points.push_back(from + (to - from) * (static_cast<double>(i) / steps));
}

LabelPlace LabelPlacer::place(const PagePoint& point, const std::string& text, const Box& drawing) {
    const PagePoint middle = drawing.middle();
    const bool isUpper = point[1] <= middle[1] + kInset;
    const bool isLeft = point[0] <= middle[0];
    const double above = point[1] - kGap;
    const double below = point[1] + kGap + kCapHeight;
    const double sideY = point[1] + kCapHeight / 2;
    const double nearY = isUpper ? above : below;
    const double farY = isUpper ? below : above;
    const LabelPlace rightOf{PagePoint(point[0] + kInset, nearY), TextAnchor::Start};
    const LabelPlace leftOf{PagePoint(point[0] - kInset, nearY), TextAnchor::End};
    const auto at = [](const LabelPlace& place, double y) {
        return LabelPlace{PagePoint(place.at[0], y), place.anchor};
    };
    const LabelPlace& inwards = isLeft ? rightOf : leftOf;
    const LabelPlace& outwards = isLeft ? leftOf : rightOf;
    const double outX = point[0] + (isLeft ? -2 : 2) * kInset;
    const std::array<LabelPlace, 7> candidates = {inwards,
                                                  outwards,
                                                  {PagePoint(point[0], nearY), TextAnchor::Middle},
                                                  {PagePoint(outX, sideY), outwards.anchor},
                                                  at(outwards, farY),
                                                  at(inwards, farY),
                                                  {PagePoint(point[0], farY), TextAnchor::Middle}};

    const double width = labelWidth(text);
    const auto costOf = [&](const LabelPlace& candidate) { return cost(boxOf(candidate, width)); };
    const LabelPlace best =
        *std::min_element(candidates.begin(), candidates.end(),
                          [&](const auto& a, const auto& b) { return costOf(a) < costOf(b); });
    avoidBox(boxOf(best, width));
    return best;
}

int LabelPlacer::cost(const Box& label) const {
    int sum = 0;
    for (const Box& taken : boxes)
        if (taken.overlaps(label)) sum += kBoxCost;
    for (const PagePoint& point : points)
        if (label.contains(point)) sum += kPointCost;
    for (int i = 0; i < kSampleColumns; ++i) {
        for (int j = 0; j < kSampleRows; ++j) {
            const PagePoint sample = label.corner + PagePoint(label.width * i / (kSampleColumns - 1),
                                                              label.height * j / (kSampleRows - 1));
            if (!box.contains(sample)) sum += kOutsideCost;
            const bool isCovering = std::any_of(areas.begin(), areas.end(),
                                                [&](const auto& area) { return isInside(area, sample); });
            if (isCovering) sum += kAreaCost;
        }
    }
    return sum;
}

}  // namespace quarn
