#include "StlDefect.h"

#include <algorithm>
#include <cmath>

#include "StlLayout.h"

namespace quarn {

namespace {

std::optional<StlDefect> findCountDefect(std::string_view text, const std::optional<StlLayout>& layout) {
    if (!layout)
        return StlDefect{.name = "stl-count",
                         .found = std::to_string(text.size()) + " bytes",
                         .expected = "at least 84, as a binary STL file has"};
    const bool hasRecords = layout->recordCount > 0;
    if (layout->declaredCount < 1)
        return StlDefect{
            .name = "stl-count",
            .found = hasRecords ? "a header that declares no triangles" : "no triangle in the STL file",
            .expected = "at least one",
            .isRepairable = hasRecords};
    if (layout->count() < static_cast<std::uint64_t>(layout->declaredCount))
        return StlDefect{.name = "stl-count",
                         .found = std::to_string(layout->recordCount) +
                                  " triangles and a header that declares " +
                                  std::to_string(layout->declaredCount),
                         .expected = "all of them",
                         .isRepairable = hasRecords};
    return {};
}

std::optional<StlDefect> findNumberDefect(std::string_view text, const StlLayout& layout) {
    std::optional<StlDefect> defect;
    forEachStlRecord(text, layout.count(), [&](std::uint64_t number, const std::array<float, 12>& numbers) {
        const auto* const bad =
            std::find_if(numbers.begin(), numbers.end(), [](float value) { return !std::isfinite(value); });
        if (defect || bad == numbers.end()) return;
        // The normal comes first. Without it nothing is lost, since the winding also determines it.
        const bool isNormal =
            std::all_of(numbers.begin() + 3, numbers.end(), [](float value) { return std::isfinite(value); });
        defect = {.name = isNormal ? "stl-normal" : "not-finite",
                  .found = (isNormal ? "a normal that is not finite in triangle "
                                     : "a number that is not finite in triangle ") +
                           std::to_string(number),
                  .expected = isNormal ? "a finite one" : "finite ones",
                  .triangle = number,
                  .isRepairable = isNormal};
    });
    return defect;
}

}  // namespace

std::optional<StlDefect> findStlDefect(std::string_view text) {
    const auto layout = stlLayoutOf(text);
    const bool isBinary = isBinaryStl(text);
    if (isStlTextToLibrary(text) || (layout && !isBinary))
        return StlDefect{.name = isBinary ? "stl-header" : "stl-text-form",
                         .found = isBinary
                                      ? "a binary STL file whose header reads as the first line of a text one"
                                      : "an STL file in text form",
                         .expected = "the binary form, with a header that does not begin with \"solid\"",
                         .isRepairable = true};
    if (auto defect = findCountDefect(text, layout)) return defect;
    return findNumberDefect(text, *layout);
}

}  // namespace quarn
