/// \file
/// Which form of STL a text has.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace quarn {

/// The binary form: a header, a count, and records that follow each other.
struct StlLayout {
    static constexpr std::size_t kHeaderSize = 80;
    static constexpr std::size_t kRecordsBegin = 84;
    static constexpr std::size_t kRecordSize = 50;

    std::int32_t declaredCount = 0;  ///< Triangles that the file tells of.
    std::uint64_t recordCount = 0;   ///< Whole records that it holds.

    /// Triangles that it tells of and holds.
    [[nodiscard]] std::uint64_t count() const;
};

/// Calls \p visit with the number from 1 and the numbers of each of the first \p count records: normal, then corners.
template <class Visit>
void forEachStlRecord(std::string_view text, std::uint64_t count, Visit visit) {
    std::array<float, 12> numbers{};
    for (std::uint64_t i = 0; i < count; ++i) {
        std::memcpy(numbers.data(), text.data() + StlLayout::kRecordsBegin + i * StlLayout::kRecordSize,
                    sizeof numbers);
        visit(i + 1, numbers);
    }
}

/// Nothing where \p text is shorter than a header and a count.
[[nodiscard]] std::optional<StlLayout> stlLayoutOf(std::string_view text);

/// Whether a file that begins like this is one of STL.
[[nodiscard]] bool beginsLikeStl(std::string_view beginning);

/// Whether a whole file is of the binary form, whatever its header says.
[[nodiscard]] bool isBinaryStl(std::string_view text);

/// Whether STLScreen takes a whole file for the text form.
[[nodiscard]] bool isStlTextToLibrary(std::string_view text);

}  // namespace quarn
