/// \file
/// Finds OBJ texts that the library reads otherwise than other programs.
#pragma once

#include <string>

#include <QuarnScreen/Detail/Obj/ObjData.h>

namespace quarn {

/// Throws an Error if the library reads another mesh from a text than repairObj() does: if it skips
/// a vertex after a byte order mark or before a tab, for example, and the faces refer to other
/// vertices for that. The error names the first repair. Concave faces are no reason, because their
/// fans are as specified.
///
/// O(n) in the size of the text, and one look at each of its bytes for most texts.
/// \param objText a text that the library loads, with its continued lines
/// \param objData what the library reads from it
void requireSameReading(const std::string& name, const std::string& objText, const detail::ObjData& objData);

}  // namespace quarn
