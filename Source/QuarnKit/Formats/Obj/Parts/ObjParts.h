/// \file
/// Lists the objects and groups of an OBJ text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

enum class ObjPartKind {
    Object,  ///< Named by a line "o".
    Group,   ///< Named by a line "g", or the default group.
};

/// An object or group of an OBJ text.
struct ObjPart {
    ObjPartKind kind = ObjPartKind::Object;
    std::string name;
    std::uint64_t faces = 0;
    std::uint64_t vertices = 0;  ///< Vertices to which its faces refer.
    std::uint64_t line = 0;      ///< Its first line "o" or "g"; a face if it has none.
};

/// Returns the objects and groups in the order of their first lines. Objects of one name are one,
/// and so are groups. Faces of no object and no group are those of the group kDefaultObjGroup.
///
/// The text may be one that needs repair. Throws an Error for a text without any, with more than a
/// million of them, or with more than 256 names on one line "g".
/// \param name name of the text in error messages
[[nodiscard]] std::vector<ObjPart> listObjParts(const std::string& name, std::string_view text);

}  // namespace quarn
