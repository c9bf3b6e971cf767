/// \file
/// The repairs of OBJ texts.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quarn {

enum class ObjRepair : std::size_t {
    ByteOrderMark,       ///< The mark before the text is removed.
    OddSeparator,        ///< Tabs and other white space become blanks.
    LineEnd,             ///< A carriage return alone becomes a line feed.
    FinalLineFeed,       ///< Added.
    JoinedLine,          ///< A continued line of data becomes one line.
    TrailingComment,     ///< A comment after a face gets a line of its own.
    PlusSign,            ///< The sign before a number is removed.
    RelativeReference,   ///< Becomes the absolute number.
    CornerForm,          ///< Trailing slashes are removed.
    ShortFace,           ///< A face of fewer than three corners becomes a comment.
    ConcaveFace,         ///< A face whose fan overlaps itself becomes other triangles.
    UnknownLine,         ///< A line that would be misread becomes a comment.
    FinalBackslash,      ///< A blank follows a backslash that would extend a name or comment.
    UnreadableUV,        ///< References to a UV that is no number are removed.
    BadUVReference,      ///< A reference to a UV that does not exist is removed.
    BadNormalReference,  ///< Becomes a reference to the normal of the face.
    MissingNormal,       ///< As BadNormalReference.
    Count                ///< Number of repairs.
};

/// Counts and first lines of repairs.
class ObjRepairs {
public:
    struct Tally {
        ObjRepair repair = ObjRepair::Count;
        std::uint64_t count = 0;
        std::uint64_t firstLine = 0;
    };

    void note(ObjRepair repair, std::uint64_t line);
    [[nodiscard]] bool any() const { return !tallies().empty(); }
    /// Returns the repairs that occurred, in the order of ObjRepair.
    [[nodiscard]] std::vector<Tally> tallies() const;

private:
    struct Entry {
        std::uint64_t count = 0;
        std::uint64_t firstLine = 0;
    };
    std::array<Entry, static_cast<std::size_t>(ObjRepair::Count)> entries;
};

/// Returns a word for programs, such as "relative-reference".
[[nodiscard]] std::string repairName(ObjRepair repair);

/// Returns the defects in words, such as "12 numbers with a plus sign".
[[nodiscard]] std::string repairText(const ObjRepairs::Tally& tally);

/// Returns the description of faces whose fans overlap and that have no other triangles, which are
/// not repaired.
[[nodiscard]] std::string selfIntersectionText(std::uint64_t faceCount);

}  // namespace quarn
