#include "PlotStyle.h"

#include <array>
#include <string_view>

#include "PlotViews.h"

namespace quarn {

namespace {

using Colour = std::array<int, 3>;

struct Range {
    Colour dark;
    Colour light;
};

// The front is light and cool, the back darker and warm.
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
path{fill:none;stroke-linejoin:round}
.page{fill:#fff}
.panel{fill:none;stroke:#bbb}
.grid{stroke:#3a4a5a;stroke-width:.6px;stroke-opacity:.75}
.outline{stroke:#111;stroke-width:2.2px}
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
)";

std::string colourText(const Colour& colour) {
    std::string text = "#";
    for (const int part : colour) {
        text += "0123456789abcdef"[part / 16];
        text += "0123456789abcdef"[part % 16];
    }
    return text;
}

// Strokes of the same colour cover the hairlines that would show between two cells.
std::string shadeRules(const std::string& side, const Range& range) {
    std::string text;
    for (int shade = 0; shade < kShades; ++shade) {
        Colour colour{};
        for (std::size_t i = 0; i < colour.size(); ++i)
            colour.at(i) = range.dark.at(i) + (range.light.at(i) - range.dark.at(i)) * shade / (kShades - 1);
        const std::string value = colourText(colour);
        text.append(".").append(side).append(std::to_string(shade));
        text.append("{fill:").append(value).append(";stroke:").append(value).append("}\n");
    }
    return text;
}

}  // namespace

std::string plotStyleSheet() {
    return std::string(kFixedRules) + "path[class^=f],path[class^=b]{stroke-width:.7px}\n" +
           shadeRules(kFrontClass, kFront) + shadeRules(kBackClass, kBack);
}

}  // namespace quarn
