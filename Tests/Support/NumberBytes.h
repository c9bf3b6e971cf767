/// \file
/// Numbers as bytes.
#pragma once

#include <bit>
#include <string>
#include <vector>

namespace quarn::test {

/// The numbers as this machine stores them, little-endian; the same only for the same bits.
template <class Number>
std::string numberBytes(const std::vector<Number>& numbers) {
    static_assert(std::endian::native == std::endian::little);
    return {reinterpret_cast<const char*>(numbers.data()), numbers.size() * sizeof(Number)};
}

}  // namespace quarn::test
