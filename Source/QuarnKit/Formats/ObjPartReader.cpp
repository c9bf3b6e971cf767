#include "ObjPartReader.h"

#include <QuarnKit/Base/Error.h>

#include "ScreenReader.h"

namespace quarn {

std::vector<ObjPart> readObjParts(const std::string& path, std::uint64_t maxMemory, Observer& observer) {
    const auto text = readMeshText(path, maxMemory, {}, observer);
    if (!text || text->format != ScreenFormat::Obj)
        throw Error({.found = "found a screen that is not an OBJ mesh",
                     .expected = "an OBJ mesh; other screens have no objects",
                     .file = path});
    return listObjParts(text->source.name, text->source.text);
}

}  // namespace quarn
