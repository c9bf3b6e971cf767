/// \file
/// Lists without equal records.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <QuarnKit/Base/Hash.h>

namespace quarn {

/// Appends records of numbers to a list, each value once. 0 and -0 are equal, and NaN is equal to
/// nothing.
///
/// The hash table contains indices of the list alone, so that a large list takes about one cache
/// miss for each record.
template <std::size_t N>
class UniqueRecords {
public:
    using Record = std::array<float, N>;

    /// \param recordList has to outlive the object, and is changed by nothing else. The records
    ///        that it contains already are not searched.
    explicit UniqueRecords(std::vector<Record>& recordList)
        : list(recordList), first(recordList.size()), slots(kInitialSlots) {}

    /// Returns the index of the record in the list, to which a new record is appended.
    [[nodiscard]] std::int32_t indexOf(const Record& record) {
        std::size_t slot = slotOf(record);
        if (slots[slot] != 0) return static_cast<std::int32_t>(slots[slot] - 1);
        if (2 * (list.size() - first + 1) > slots.size()) {
            grow();
            slot = slotOf(record);
        }
        list.push_back(record);
        slots[slot] = static_cast<std::uint32_t>(list.size());
        return static_cast<std::int32_t>(slots[slot] - 1);
    }

private:
    static constexpr std::size_t kInitialSlots = 16;

    // Returns the slot of an equal record, or the free slot to insert it.
    [[nodiscard]] std::size_t slotOf(const Record& record) const {
        std::size_t slot = hashOf<N>(record) & (slots.size() - 1);
        while (slots[slot] != 0 && list[slots[slot] - 1] != record) slot = (slot + 1) & (slots.size() - 1);
        return slot;
    }

    void grow() {
        // A factor above two, since each growth takes a cache miss for each record.
        slots.assign(4 * slots.size(), 0);
        for (std::size_t i = first; i < list.size(); ++i)
            slots[slotOf(list[i])] = static_cast<std::uint32_t>(i + 1);
    }

    std::vector<Record>& list;
    std::size_t first;                 // index of the first record that is searched
    std::vector<std::uint32_t> slots;  // count is a power of two; an index plus 1, or 0 if free
};

}  // namespace quarn
