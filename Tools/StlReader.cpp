#include "StlReader.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "ObjContents.h"
#include "ShellWord.h"
#include "StlForm.h"
#include "ToolError.h"

namespace quarn {

namespace {

class Examiner {
public:
    Examiner(const std::string& file, const std::string& examinedName, std::string_view examinedText)
        : name(examinedName),
          text(examinedText),
          remedy("quarnscreen convert " + shellWord(file) + " -o mended.obj") {}

    /// The number of triangles that the library loads.
    [[nodiscard]] std::uint64_t examine() const;

private:
    [[noreturn]] void refuse(const std::string& found, const std::string& expected, bool isMendable) const {
        throw ToolError{
            .found = found, .expected = expected, .file = name, .remedy = isMendable ? remedy : ""};
    }

    const std::string& name;
    std::string_view text;
    std::string remedy;
};

std::uint64_t Examiner::examine() const {
    if (isStlTextToLibrary(text))
        refuse(isBinaryStl(text)
                   ? "found a binary STL file whose header reads as the first line of a text one"
                   : "found an STL file in text form",
               "the binary form, with a header that does not begin with \"solid\"", true);
    const auto layout = stlLayoutOf(text);
    if (!layout)
        refuse("found " + std::to_string(text.size()) + " bytes", "84 at least, as a binary STL file has",
               false);
    if (layout->toldCount < 1)
        refuse("found no triangle in the STL file", "one at least", layout->recordCount > 0);
    if (layout->count() < static_cast<std::uint64_t>(layout->toldCount))
        refuse("found " + std::to_string(layout->recordCount) + " triangles and a header that tells of " +
                   std::to_string(layout->toldCount),
               "all of them", layout->recordCount > 0);
    forEachStlRecord(text, layout->count(), [&](std::uint64_t number, const std::array<float, 12>& numbers) {
        if (!std::all_of(numbers.begin(), numbers.end(), [](float value) { return std::isfinite(value); }))
            refuse("found a number that is not finite in triangle " + std::to_string(number), "finite ones",
                   false);
    });
    return layout->count();
}

}  // namespace

StlMesh loadStl(const std::string& file, const std::string& name, std::string text, std::uint64_t maxMemory) {
    StlMesh mesh{.screen = std::make_shared<STLScreen>(),
                 .triangleCount = Examiner(file, name, text).examine()};
    refuseMeshAbove(maxMemory, name, text.size(), mesh.triangleCount);
    std::istringstream stream(std::move(text));
    mesh.screen->deserialize(stream);
    return mesh;
}

}  // namespace quarn
