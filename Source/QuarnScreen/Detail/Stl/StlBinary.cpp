#include "StlBinary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

#include <QuarnScreen/Detail/Platform/PagePrefault.h>

namespace quarn::detail {
namespace {

constexpr std::streamsize kHeaderSize = 80;
constexpr std::size_t kRecordSize = 50;

// Sum of a normal's components below which the normal counts as missing.
constexpr double kMinNormalSum = 1e-6;

// Twelve little-endian floats, as on this machine: the normal, then the corners.
using Numbers = std::array<float, 12>;

Point<double, 3> pointAt(const Numbers& numbers, std::size_t first) {
    return {numbers[first], numbers[first + 1], numbers[first + 2]};
}

void appendTriangle(const char* record, std::vector<Triangle>& triangles) {
    Numbers numbers{};
    std::memcpy(numbers.data(), record, sizeof(numbers));
    Triangle& triangle = triangles.emplace_back();
    triangle.normal = pointAt(numbers, 0);
    for (std::size_t i = 0; i < 3; ++i) {
        triangle.vertices[i].position = pointAt(numbers, 3 * i + 3);
        triangle.vertices[i].normal = triangle.normal;
    }
    triangle.computeCentroids();
    const float sum = numbers[0] + numbers[1] + numbers[2];
    if (!(std::abs(static_cast<double>(sum)) < kMinNormalSum)) return;
    triangle.computeGeometry();
    for (TriangleVertex& corner : triangle.vertices) corner.normal = triangle.normal;
}

}  // namespace

bool readStlBinary(std::istream& in, std::size_t size, std::vector<Triangle>& triangles) {
    in.clear();
    in.seekg(0);
    std::array<char, kHeaderSize> header{};
    if (!in.read(header.data(), kHeaderSize)) return false;
    std::array<char, sizeof(std::int32_t)> countBytes{};
    if (!in.read(countBytes.data(), countBytes.size())) return false;
    std::int32_t count = 0;
    std::memcpy(&count, countBytes.data(), sizeof(count));
    if (count < 1) return true;

    const std::size_t capacity = std::min(static_cast<std::size_t>(count), size / kRecordSize);
    triangles.reserve(triangles.size() + capacity);
    PagePrefault pages;
    pages.setRange(triangles.data() + triangles.size(), capacity * sizeof(Triangle));
    pages.prefault();

    std::array<char, kRecordSize> record{};
    for (std::int32_t i = 0; i < count; ++i) {
        if (!in.read(record.data(), kRecordSize)) return false;
        appendTriangle(record.data(), triangles);
    }
    return true;
}

}  // namespace quarn::detail
