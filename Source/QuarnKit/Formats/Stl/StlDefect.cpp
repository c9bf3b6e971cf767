#include "StlDefect.h"

#include <algorithm>
#include <cmath>

#include "Base/ShellQuote.h"
#include "StlLayout.h"

namespace quarn {

namespace {

std::optional<StlTrouble> troubleOfCounts(std::string_view text, const std::optional<StlLayout>& layout) {
    if (!layout)
        return StlTrouble{.name = "stl-count",
                          .found = std::to_string(text.size()) + " bytes",
                          .expected = "84 at least, as a binary STL file has"};
    const bool hasRecords = layout->recordCount > 0;
    if (layout->toldCount < 1)
        return StlTrouble{
            .name = "stl-count",
            .found = hasRecords ? "a header that tells of no triangle" : "no triangle in the STL file",
            .expected = "one at least",
            .isMendable = hasRecords};
    if (layout->count() < static_cast<std::uint64_t>(layout->toldCount))
        return StlTrouble{.name = "stl-count",
                          .found = std::to_string(layout->recordCount) +
                                   " triangles and a header that tells of " +
                                   std::to_string(layout->toldCount),
                          .expected = "all of them",
                          .isMendable = hasRecords};
    return {};
}

std::optional<StlTrouble> troubleOfNumbers(std::string_view text, const StlLayout& layout) {
    std::optional<StlTrouble> trouble;
    forEachStlRecord(text, layout.count(), [&](std::uint64_t number, const std::array<float, 12>& numbers) {
        const auto* const bad =
            std::find_if(numbers.begin(), numbers.end(), [](float value) { return !std::isfinite(value); });
        if (trouble || bad == numbers.end()) return;
        // The normal comes first. Nothing is lost with it, as the winding tells it, too.
        const bool isNormal =
            std::all_of(numbers.begin() + 3, numbers.end(), [](float value) { return std::isfinite(value); });
        trouble = {.name = isNormal ? "stl-normal" : "not-finite",
                   .found = (isNormal ? "a normal that is not finite in triangle "
                                      : "a number that is not finite in triangle ") +
                            std::to_string(number),
                   .expected = isNormal ? "a finite one" : "finite ones",
                   .triangle = number,
                   .isMendable = isNormal};
    });
    return trouble;
}

}  // namespace

std::optional<StlTrouble> stlTroubleOf(std::string_view text) {
    const auto layout = stlLayoutOf(text);
    const bool isBinary = isBinaryStl(text);
    if (isStlTextToLibrary(text) || (layout && !isBinary))
        return StlTrouble{
            .name = isBinary ? "stl-header" : "stl-text-form",
            .found = isBinary ? "a binary STL file whose header reads as the first line of a text one"
                              : "an STL file in text form",
            .expected = "the binary form, with a header that does not begin with \"solid\"",
            .isMendable = true};
    if (auto trouble = troubleOfCounts(text, layout)) return trouble;
    return troubleOfNumbers(text, *layout);
}

std::string stlRemedy(const std::string& file) {
    return "quarnscreen convert " + shellWord(file) + " -o mended.obj";
}

}  // namespace quarn
