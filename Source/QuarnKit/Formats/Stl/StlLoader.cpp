#include "StlLoader.h"

#include <sstream>

#include <QuarnKit/Formats/Obj/ObjValidation.h>

#include "Base/ToolError.h"
#include "StlDefect.h"
#include "StlLayout.h"

namespace quarn {

StlMesh loadStl(const std::string& file, const std::string& name, std::string text, std::uint64_t maxMemory) {
    if (const auto trouble = stlTroubleOf(text))
        throw ToolError{.found = "found " + trouble->found,
                        .expected = trouble->expected,
                        .file = name,
                        .remedy = trouble->isMendable ? stlRemedy(file) : ""};
    const auto layout = stlLayoutOf(text);
    StlMesh mesh{.screen = std::make_shared<STLScreen>(), .triangleCount = layout ? layout->count() : 0};
    refuseMeshAbove(maxMemory, name, text.size(), mesh.triangleCount);
    std::istringstream stream(std::move(text));
    mesh.screen->deserialize(stream);
    return mesh;
}

}  // namespace quarn
