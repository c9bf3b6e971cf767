/// \file
/// The object and the groups to which the faces of an OBJ text belong.
#pragma once

#include <string_view>
#include <vector>

#include <QuarnKit/Formats/Obj/Repair/ObjLogicalLines.h>

namespace quarn {

/// Groups whose faces follow a line "g" without a name, and faces of no object and no group.
inline constexpr std::string_view kDefaultObjGroup = "default";

/// Follows the lines "o" and "g" of a text.
///
/// A line "o" names one object, which may contain blanks, and ends the groups before it. A line "g"
/// names one or more groups, separated by blanks.
class ObjPartNames {
public:
    /// Reads a line, and returns true if it is a line "o" or "g". Its text has to outlive this
    /// object.
    bool read(const ObjLogicalLine& logicalLine);

    /// Returns the name of the object; empty if there is none.
    [[nodiscard]] std::string_view object() const { return objectName; }

    /// Returns the groups; kDefaultObjGroup alone if there is no object either.
    [[nodiscard]] const std::vector<std::string_view>& groups() const { return groupNames; }

    /// Returns true if \p name is the object, one of the groups, or all words of the line "g".
    [[nodiscard]] bool contains(std::string_view name) const;

private:
    std::string_view objectName;
    std::string_view groupText;
    std::vector<std::string_view> groupNames = {kDefaultObjGroup};
};

/// Returns true if the library or repairObj() reads a line as a face.
[[nodiscard]] bool isObjFaceLine(const ObjLogicalLine& logicalLine);

}  // namespace quarn
