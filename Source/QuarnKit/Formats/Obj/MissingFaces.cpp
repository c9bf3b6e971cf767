#include "MissingFaces.h"

#include <algorithm>
#include <array>

#include <QuarnKit/Base/Error.h>

#include "ObjSourceText.h"

namespace quarn {

namespace {

// A kind of element that is no face.
struct Element {
    std::string_view keyword;
    std::string_view plural;
    bool isPresent = false;
};

std::string otherElementsOf(std::string_view text) {
    std::array elements = {Element{"p", "points"}, Element{"l", "lines"}, Element{"curv", "curves"},
                           Element{"curv2", "curves"}, Element{"surf", "free-form surfaces"}};
    forEachObjLine(text, [&](const char* line) {
        const auto found = std::find_if(elements.begin(), elements.end(), [&](const Element& element) {
            return element.keyword == wordAt(line);
        });
        if (found != elements.end()) found->isPresent = true;
    });
    std::string names;
    for (const Element& element : elements)
        if (element.isPresent && !names.ends_with(element.plural))
            names += (names.empty() ? "" : " and ") + std::string(element.plural);
    return names;
}

}  // namespace

void refuseMissingFaces(const std::string& name, std::string_view text) {
    const std::string others = otherElementsOf(std::string(text));
    throw Error({.found = "found no face in the OBJ text" + (others.empty() ? "" : ", only " + others),
                 .expected = R"(lines that begin with "f"; export the surface with its faces)",
                 .file = name});
}

}  // namespace quarn
