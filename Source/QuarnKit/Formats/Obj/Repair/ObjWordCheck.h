/// \file
/// Finds words of an OBJ text that the library would misread as numbers.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include <QuarnKit/Formats/Obj/ObjSourceText.h>
#include <QuarnScreen/Detail/Obj/ObjData.h>

namespace quarn {

/// Checks the words of vertices and UVs. The library reads any word as a number: "1,5" as 1, "nan"
/// as 0, and "+1" as 0.
class ObjWordCheck {
public:
    /// Reads the lines of a text. O(n) in its size; lines of plain numbers take one look at each of
    /// their bytes.
    /// \param objText followed by a NUL
    void read(std::string_view objText);

    /// Throws an Error for the first vertex with a word that is no number, or else for the first
    /// vertex or UV that the library misreads and a face refers to. Other UVs have no effect.
    /// \param text the text that was read
    /// \param faces its faces
    void requireNumbers(const ObjSourceText& text, std::span<const detail::ObjFace> faces) const;

private:
    // Vertices or UVs, of which most texts have no suspicious one.
    struct Lines {
        std::size_t count = 0;
        std::vector<bool> isMisread = {};  // up to the last that is misread

        void addCorrect() { ++count; }
        void addMisread();
        [[nodiscard]] bool isMisreadAt(std::int32_t index) const {
            return detail::isObjIndexInRange(index, isMisread.size()) &&
                   isMisread[static_cast<std::size_t>(index)];
        }
    };

    void readLine(const char* line);

    std::string_view text;
    Lines vertices;
    Lines uvs;
    const char* invalidVertex = nullptr;  // line of the first vertex that is not three numbers
};

}  // namespace quarn
