/// \file
/// Detects the form of an STL text.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace quarn {

/// The binary form: a header, a count, and consecutive records.
struct StlLayout {
    static constexpr std::size_t kHeaderSize = 80;
    static constexpr std::size_t kRecordsBegin = 84;
    static constexpr std::size_t kRecordSize = 50;

    std::int32_t declaredCount = 0;  ///< Triangles that the file declares.
    std::uint64_t recordCount = 0;   ///< Whole records that it contains.

    /// Returns the number of triangles that it declares and contains.
    [[nodiscard]] std::uint64_t count() const;
};

/// Calls \p visit with the number from 1 and the numbers of each of the first \p count records:
/// normal, then corners.
template <class Visit>
void forEachStlRecord(std::string_view text, std::uint64_t count, Visit visit) {
    std::array<float, 12> numbers{};
    for (std::uint64_t i = 0; i < count; ++i) {
        std::memcpy(numbers.data(), text.data() + StlLayout::kRecordsBegin + i * StlLayout::kRecordSize,
                    sizeof numbers);
        visit(i + 1, numbers);
    }
}

/// Returns the layout; nothing if \p text is shorter than a header and a count.
[[nodiscard]] std::optional<StlLayout> stlLayoutOf(std::string_view text);

/// Returns true if the first word of a text is "solid", in letters of either case.
[[nodiscard]] bool beginsWithSolid(std::string_view text);

/// Returns true if bytes are those of a text: at most a few are control characters.
[[nodiscard]] bool isTextLike(std::string_view bytes);

/// Returns true if a whole file has the binary form. The header has no effect.
[[nodiscard]] bool isBinaryStl(std::string_view text);

/// Returns true if STLScreen reads a whole file as the text form.
[[nodiscard]] bool isStlTextToLibrary(std::string_view text);

}  // namespace quarn
