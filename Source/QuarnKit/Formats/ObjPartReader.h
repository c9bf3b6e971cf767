/// \file
/// Lists the objects and groups of the mesh in a file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QuarnKit/Base/Observer.h>
#include <QuarnKit/Formats/Obj/Parts/ObjParts.h>

namespace quarn {

/// Reads an OBJ file, or the OBJ screen of an XML file, and returns listObjParts() of its text. The
/// mesh need not be one that the library loads. Throws an Error for screens of other types.
[[nodiscard]] std::vector<ObjPart> readObjParts(const std::string& path, std::uint64_t maxMemory,
                                                Observer& observer);

}  // namespace quarn
