/// \file
/// What keeps an OBJ text from being loaded as it is, and can be mended.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quarn {

enum class ObjRepair : std::size_t {
    ByteOrderMark,      ///< The mark in front of the text is left out.
    OddSeparator,       ///< Tabs and the like become blanks.
    LineEnd,            ///< A carriage return alone becomes a line feed.
    FinalLineFeed,      ///< Added.
    JoinedLine,         ///< A line of data that others continue becomes one line.
    TrailingComment,    ///< A comment behind a face gets a line of its own.
    PlusSign,           ///< Left out in front of a number.
    RelativeReference,  ///< Becomes the number that it means.
    CornerForm,         ///< Slashes behind which nothing follows are left out.
    ShortFace,          ///< A face of fewer than three corners becomes a comment.
    UnknownLine,        ///< A line that would be read as something else becomes a comment.
    FinalBackslash,  ///< A backslash that would join the next line to a name or comment gets a blank behind it.
    UnreadableUV,    ///< A UV that is no number is not referred to any more.
    BadUVReference,      ///< A reference to a UV that is not there is left out.
    BadNormalReference,  ///< Becomes a reference to the normal of the face.
    MissingNormal,       ///< As BadNormalReference.
    Count                ///< How many there are.
};

/// What was mended, and where.
class ObjRepairs {
public:
    struct Tally {
        ObjRepair repair = ObjRepair::Count;
        std::uint64_t count = 0;
        std::uint64_t firstLine = 0;
    };

    void note(ObjRepair repair, std::uint64_t line);
    [[nodiscard]] bool any() const { return !tallies().empty(); }
    /// All that happened, in the order of ObjRepair.
    [[nodiscard]] std::vector<Tally> tallies() const;

private:
    struct Entry {
        std::uint64_t count = 0;
        std::uint64_t firstLine = 0;
    };
    std::array<Entry, static_cast<std::size_t>(ObjRepair::Count)> entries;
};

/// A word for programs, as in "relative-reference".
[[nodiscard]] std::string repairName(ObjRepair repair);

/// What was found, as in "12 references relative to their line".
[[nodiscard]] std::string repairText(const ObjRepairs::Tally& tally);

}  // namespace quarn
