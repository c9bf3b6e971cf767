#include "PlotStyle.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <QuarnKit/Plot/Views/PlotViews.h>

namespace quarn {

namespace {

using Color = std::array<int, 3>;

struct Range {
    Color dark;
    Color light;
};

// The front is light and cold, the back is darker and warm.
constexpr Range kFront = {{96, 146, 196}, {226, 239, 252}};
constexpr Range kBack = {{140, 104, 60}, {226, 196, 150}};

constexpr std::string_view kFixedRules =
    R"(text{font-family:Helvetica,Arial,"Liberation Sans","DejaVu Sans",sans-serif;font-size:12px;fill:#222}
.title{font-size:22px;font-weight:bold}
.shape{font-size:20px}
.fact{font-size:13px;fill:#444}
.square{fill:#e2effc}
.view{font-size:14px;font-weight:bold}
.label,.size{paint-order:stroke;stroke:#fff;stroke-width:3px;stroke-linejoin:round}
.size{font-size:13px;font-weight:bold;fill:#174a7c}
path{fill:none;stroke-linejoin:round;stroke-width:.7px}
.page{fill:#fff}
.panel{fill:none;stroke:#bbb}
.grid{stroke:#3a4a5a;stroke-width:.6px;stroke-opacity:.75}
.boundary{stroke:#111;stroke-width:2.2px}
.seam{stroke:#111;stroke-width:1.4px;stroke-dasharray:5 4}
.dimension{stroke:#174a7c;stroke-width:.9px}
.axis{stroke:#555;stroke-width:1.2px}
.axis-head{fill:#555}
.heading{stroke:#c2185b;stroke-width:2.2px}
.heading-head{fill:#c2185b}
.heading-hidden{stroke:#c2185b;stroke-width:1.6px;stroke-dasharray:3 3}
.heading-hidden-head{fill:#c2185b}
.eye-hidden{fill:none;stroke:#c2185b;stroke-width:1.6px;stroke-dasharray:3 2}
.eye{fill:#fff;stroke:#c2185b;stroke-width:2.4px}
.corner{fill:#111}
.halo{stroke:#fff;stroke-width:5.2px;stroke-opacity:.85}
.halo-head{fill:#fff;stroke:#fff;stroke-width:4px;stroke-opacity:.85}
.halo-circle{fill:#fff;stroke:#fff;stroke-width:6px;stroke-opacity:.85}
)";

constexpr std::string_view kMeshRules = R"(.uv{fill:#e2effc;stroke:#8fa9c2;stroke-width:.8px}
.uv-fine{fill:#e2effc;stroke:#c3d6e8;stroke-width:1px}
.uv-fill{fill:#e2effc;stroke:#e2effc;stroke-width:.7px}
.space{fill:#f6f6f6;stroke:#999;stroke-width:.8px}
.border{stroke:#111;stroke-width:1.3px}
.boundary-hidden{stroke:#111;stroke-width:1.2px;stroke-opacity:.3}
.thin{stroke:#111;stroke-width:.5px}
.hole{stroke:#f57c00;stroke-width:3px}
.hole-hidden{stroke:#f57c00;stroke-width:1.6px;stroke-opacity:.45}
.flipped{fill:url(#flipped-hatch);stroke:#c01515;stroke-width:1.1px}
.flipped-dot{fill:#e02020;stroke:#e02020;stroke-width:3.6px;stroke-linecap:round}
.bad-uv{fill:#9c4dcc;stroke:#9c4dcc;stroke-width:.7px}
.bad-uv-dot{fill:#9c4dcc;stroke:#9c4dcc;stroke-width:3.6px;stroke-linecap:round}
.overlap{fill:#5e1a8f}
)";

// Stripes differ from any plain area and from the line around a hole without color, too.
constexpr std::string_view kMeshDefinitions =
    R"svg(<pattern id="flipped-hatch" width="4.4" height="4.4" patternUnits="userSpaceOnUse" patternTransform="rotate(45)">
<rect width="4.4" height="4.4" fill="#fff"/>
<rect width="2.2" height="4.4" fill="#e02020"/>
</pattern>
)svg";

// Increasing lightness, so that the scale does not depend on color vision.
constexpr std::array<Color, 5> kStretchColors = {
    {{52, 20, 96}, {52, 86, 148}, {28, 142, 140}, {110, 196, 94}, {250, 230, 60}}};

std::string colorText(const Color& color) {
    std::string text = "#";
    for (const int part : color) {
        text += "0123456789abcdef"[part / 16];
        text += "0123456789abcdef"[part % 16];
    }
    return text;
}

Color mixColors(const Color& from, const Color& to, int step, int stepCount) {
    Color color{};
    for (std::size_t i = 0; i < color.size(); ++i)
        color.at(i) = from.at(i) + (to.at(i) - from.at(i)) * step / stepCount;
    return color;
}

std::string areaRule(const std::string& styleClass, const Color& color) {
    const std::string value = colorText(color);
    return "." + styleClass + "{fill:" + value + ";stroke:" + value + "}\n";
}

// Strokes of the same color cover hairlines between adjacent cells.
std::string shadeRules(const std::string& side, const Range& range) {
    std::string text;
    for (int shade = 0; shade < kShades; ++shade)
        text +=
            areaRule(side + std::to_string(shade), mixColors(range.dark, range.light, shade, kShades - 1));
    return text;
}

}  // namespace

std::string plotStyleSheet() {
    return std::string(kFixedRules) + shadeRules(kFrontClass, kFront) + shadeRules(kBackClass, kBack);
}

std::string meshStyleRules() {
    return std::string(kMeshRules);
}

std::string meshDefinitions() {
    return std::string(kMeshDefinitions);
}

std::string stretchStyleRules() {
    std::string text = areaRule(kNoStretchClass, {190, 190, 190});
    constexpr int kParts = static_cast<int>(kStretchColors.size()) - 1;
    for (int step = 0; step < kStretchSteps; ++step) {
        const int place = step * kParts;
        const int part = std::min(place / (kStretchSteps - 1), kParts - 1);
        const auto first = static_cast<std::size_t>(part);
        text += areaRule(kStretchClass + std::to_string(step),
                         mixColors(kStretchColors.at(first), kStretchColors.at(first + 1),
                                   place - part * (kStretchSteps - 1), kStretchSteps - 1));
    }
    return text;
}

}  // namespace quarn
