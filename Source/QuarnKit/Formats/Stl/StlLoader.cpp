#include "StlLoader.h"

#include <sstream>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/Obj/ObjValidation.h>

#include "StlDefect.h"
#include "StlLayout.h"

namespace quarn {

StlMesh loadStl(const std::string& file, const std::string& name, std::string text, std::uint64_t maxMemory) {
    if (const auto defect = findStlDefect(text))
        throw Error({.found = "found " + defect->found,
                     .expected = defect->expected,
                     .file = name,
                     .remedy = defect->isRepairable ? Remedy{.kind = RemedyKind::RepairFile, .file = file}
                                                    : Remedy{}});
    const auto layout = stlLayoutOf(text);
    StlMesh mesh{.screen = std::make_shared<STLScreen>(), .triangleCount = layout ? layout->count() : 0};
    refuseMeshAbove(maxMemory, name, text.size(), mesh.triangleCount);
    std::istringstream stream(std::move(text));
    mesh.screen->deserialize(stream);
    return mesh;
}

}  // namespace quarn
