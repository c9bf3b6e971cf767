/// \file
/// Points, vectors and UV pairs.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

/// N numbers of type T, and nothing else: a position, a direction, a normal, a UV pair or a grid key.
///
/// The instances in use are Point<double, 3> (x, y, z in the screen's unit and frame), Point<double, 2> (u,
/// v) and Point<int, 2> (column, row). All coordinates are zero by default. The third parameter gives the
/// constructor exactly N arguments and is never named by a caller.
///
/// Order of evaluation is part of the behaviour: every operation works coordinate by coordinate, and sums run
/// in index order. Thread-safety: that of a value.
template <class T, std::size_t N, class = std::make_integer_sequence<std::uint64_t, N>>
class Point;

template <class T, std::size_t N, std::uint64_t... I>
class Point<T, N, std::integer_sequence<std::uint64_t, I...>> {
    template <std::uint64_t>
    using Coordinate = T;

public:
    constexpr Point() = default;
    constexpr explicit(N == 1) Point(Coordinate<I>... values) : coordinates{values...} {}

    /// Coordinate \p index, from 0.
    /// \pre index < N; it is not checked.
    constexpr T& operator[](std::size_t index) { return coordinates[index]; }
    constexpr const T& operator[](std::size_t index) const { return coordinates[index]; }

    friend constexpr Point operator+(const Point& a, const Point& b) { return Point((a[I] + b[I])...); }
    friend constexpr Point operator-(const Point& a, const Point& b) { return Point((a[I] - b[I])...); }
    friend constexpr Point operator*(const Point& a, T scalar) { return Point((a[I] * scalar)...); }
    friend constexpr Point operator*(T scalar, const Point& a) { return Point((scalar * a[I])...); }
    friend constexpr Point operator/(const Point& a, T scalar) { return Point((a[I] / scalar)...); }

    /// True as soon as one pair of coordinates differs. A NaN differs from everything, itself included, so a
    /// point that holds one is unequal to itself.
    friend constexpr bool operator!=(const Point& a, const Point& b) { return (!(a[I] == b[I]) || ...); }
    friend constexpr bool operator==(const Point& a, const Point& b) { return !(a != b); }

    /// Lexicographic order by index, for use as a key. A NaN ends the comparison with "not less".
    friend constexpr bool operator<(const Point& a, const Point& b) {
        for (std::size_t i = 0; i < N; ++i)
            if (!(a[i] == b[i])) return a[i] < b[i];
        return false;
    }

private:
    T coordinates[N]{};
};

/// Sum of the products of the coordinates, added up from zero in index order.
template <class T, std::size_t N, class Indices>
[[nodiscard]] constexpr T dot(const Point<T, N, Indices>& a, const Point<T, N, Indices>& b) {
    T sum{};
    for (std::size_t i = 0; i < N; ++i) sum = sum + a[i] * b[i];
    return sum;
}

/// Right-handed vector product.
template <class T, class Indices>
[[nodiscard]] constexpr Point<T, 3, Indices> cross(const Point<T, 3, Indices>& a,
                                                   const Point<T, 3, Indices>& b) {
    return {a[1] * b[2] - a[2] * b[1],  //
            a[2] * b[0] - a[0] * b[2],  //
            a[0] * b[1] - a[1] * b[0]};
}

/// Euclidean length, the square root of dot(a, a).
template <class T, std::size_t N, class Indices>
[[nodiscard]] T length(const Point<T, N, Indices>& a) {
    return std::sqrt(dot(a, a));
}

/// The vector of length 1 in the same direction. A zero vector becomes NaN; nothing guards against it.
template <class T, std::size_t N, class Indices>
[[nodiscard]] Point<T, N, Indices> normalized(const Point<T, N, Indices>& a) {
    return a / length(a);
}

/// "No UV": the pair of a vertex whose UV was never given, and the answer where a mesh has none.
inline constexpr Point<double, 2> kNoUV(-999.0, -999.0);
