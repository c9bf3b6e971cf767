/// \file
/// Points, vectors and UV pairs.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

/// A tuple of N numbers of type T: a position, a direction, a normal, a UV pair or a grid key.
///
/// The library uses Point<double, 3> (x, y, z in the screen's unit and frame), Point<double, 2> (u,
/// v) and Point<int, 2> (column, row). All coordinates are zero by default. A point is a literal
/// type without further state, so points can be compile-time constants.
///
/// The order of evaluation is part of the behavior. Every operation works coordinate by coordinate,
/// and sums run in index order. Every operation is O(N).
///
/// Thread-safety: concurrent reads are safe, as for a built-in value.
///
/// \tparam T type of a coordinate
/// \tparam N number of coordinates
///
/// The third parameter gives the constructor exactly N arguments. Callers never name it.
///
/// \code{.cpp}
/// const Point<double, 3> right(1.0, 0.0, 0.0);
/// const Point<double, 3> forward(0.0, 2.0, 0.0);
/// assert(dot(right, forward) == 0.0);
/// assert(cross(right, forward)[2] == 2.0);
/// assert(normalized(forward)[1] == 1.0);
/// \endcode
template <class T, std::size_t N, class = std::make_integer_sequence<std::uint64_t, N>>
class Point;

template <class T, std::size_t N, std::uint64_t... I>
class Point<T, N, std::integer_sequence<std::uint64_t, I...>> {
    template <std::uint64_t>
    using Coordinate = T;

public:
    constexpr Point() = default;
    constexpr explicit(N == 1) Point(Coordinate<I>... values) : coordinates{values...} {}

    /// Returns coordinate \p index, from 0.
    /// \pre index < N; it is not checked
    constexpr T& operator[](std::size_t index) { return coordinates[index]; }
    constexpr const T& operator[](std::size_t index) const { return coordinates[index]; }

    friend constexpr Point operator+(const Point& a, const Point& b) { return Point((a[I] + b[I])...); }
    friend constexpr Point operator-(const Point& a, const Point& b) { return Point((a[I] - b[I])...); }
    friend constexpr Point operator*(const Point& a, T scalar) { return Point((a[I] * scalar)...); }
    friend constexpr Point operator*(T scalar, const Point& a) { return Point((scalar * a[I])...); }
    friend constexpr Point operator/(const Point& a, T scalar) { return Point((a[I] / scalar)...); }

    /// True if any pair of coordinates differs. NaN differs from every number, including itself. A
    /// point with a NaN is therefore unequal to itself.
    friend constexpr bool operator!=(const Point& a, const Point& b) { return (!(a[I] == b[I]) || ...); }
    friend constexpr bool operator==(const Point& a, const Point& b) { return !(a != b); }

    /// Compares lexicographically by index, so that points can be keys of a map. At the first
    /// coordinate with a NaN the result is false; points with NaN are therefore unusable as keys.
    friend constexpr bool operator<(const Point& a, const Point& b) {
        for (std::size_t i = 0; i < N; ++i)
            if (!(a[i] == b[i])) return a[i] < b[i];
        return false;
    }

private:
    T coordinates[N]{};
};

/// Returns the dot product: the sum of the products of the coordinates, added up from zero in index
/// order.
template <class T, std::size_t N, class Indices>
[[nodiscard]] constexpr T dot(const Point<T, N, Indices>& a, const Point<T, N, Indices>& b) {
    T sum{};
    for (std::size_t i = 0; i < N; ++i) sum = sum + a[i] * b[i];
    return sum;
}

/// Returns the right-handed cross product; zero for parallel vectors.
template <class T, class Indices>
[[nodiscard]] constexpr Point<T, 3, Indices> cross(const Point<T, 3, Indices>& a,
                                                   const Point<T, 3, Indices>& b) {
    return {a[1] * b[2] - a[2] * b[1],  //
            a[2] * b[0] - a[0] * b[2],  //
            a[0] * b[1] - a[1] * b[0]};
}

/// Returns the Euclidean length: the square root of dot(a, a).
template <class T, std::size_t N, class Indices>
[[nodiscard]] T length(const Point<T, N, Indices>& a) {
    return std::sqrt(dot(a, a));
}

/// Returns the vector of length 1 in the same direction. A zero vector gives NaN in each
/// coordinate.
template <class T, std::size_t N, class Indices>
[[nodiscard]] Point<T, N, Indices> normalized(const Point<T, N, Indices>& a) {
    return a / length(a);
}

/// The pair that means "no UV": the UV of a vertex to which none was given, and the result of a
/// mapping if there is none.
inline constexpr Point<double, 2> kNoUV(-999.0, -999.0);
