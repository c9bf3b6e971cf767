/// \file
/// Lists without equal records.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include <QuarnKit/Base/Hash.h>

namespace quarn {

/// Appends records of numbers to a list, each value once. 0 and -0 are equal.
template <std::size_t N>
class UniqueRecords {
public:
    using Record = std::array<float, N>;

    /// \param recordList has to outlive the object
    explicit UniqueRecords(std::vector<Record>& recordList) : list(recordList) {}

    /// Returns the index of the record in the list, to which a new record is appended.
    [[nodiscard]] std::int32_t indexOf(const Record& record) {
        const auto [entry, isNew] = indexes.try_emplace(record, static_cast<std::int32_t>(list.size()));
        if (isNew) list.push_back(record);
        return entry->second;
    }

private:
    struct Hash {
        std::size_t operator()(const Record& record) const {
            return static_cast<std::size_t>(hashOf<N>(record));
        }
    };

    std::vector<Record>& list;
    std::unordered_map<Record, std::int32_t, Hash> indexes;
};

}  // namespace quarn
