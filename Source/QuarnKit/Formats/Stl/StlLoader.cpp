#include "StlLoader.h"

#include <sstream>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/Obj/MeshMemory.h>

#include "StlDefect.h"
#include "StlLayout.h"

namespace quarn {

StlMesh loadStl(ObjSource source, std::uint64_t maxMemory) {
    if (const auto defect = findStlDefect(source.text))
        throw Error({.found = "found " + defect->found,
                     .expected = defect->expected,
                     .file = source.name,
                     .remedy = defect->isRepairable
                                   ? Remedy{.kind = RemedyKind::RepairFile, .file = source.file}
                                   : Remedy{}});
    const auto layout = stlLayoutOf(source.text);
    StlMesh mesh{.screen = std::make_shared<STLScreen>(), .triangleCount = layout ? layout->count() : 0};
    refuseMeshAbove(maxMemory, source.name,
                    {.textBytes = source.text.size(), .triangles = mesh.triangleCount});
    std::istringstream stream(std::move(source.text));
    mesh.screen->deserialize(stream);
    return mesh;
}

}  // namespace quarn
