/// \file
/// Square matrices.
#pragma once

#include <cmath>
#include <cstddef>
#include <utility>

#include <QuarnScreen/Point.h>

/// A square matrix of N by N numbers, stored row by row. All elements are zero by default.
///
/// The library uses Matrix<float, 4>: an affine map whose column 3 is the translation. All
/// arithmetic is done in T.
///
/// Thread-safety: concurrent reads are safe, as for a built-in value.
///
/// \tparam T type of an element
/// \tparam N number of rows and columns
///
/// \code{.cpp}
/// auto move = Matrix<float, 4>::identity();
/// move(0, 3) = 5.0F;
/// Matrix<float, 4> back;
/// assert(move.inverse(back));
/// assert(back.transformPoint(6.0F, 2.0F, 3.0F)[0] == 1.0F);
/// \endcode
template <class T, std::size_t N>
class Matrix {
public:
    /// Returns the identity matrix.
    [[nodiscard]] static constexpr Matrix identity();

    /// Returns the element of a row and a column, from 0.
    /// \pre both are below N; it is not checked
    constexpr T& operator()(std::size_t row, std::size_t column) { return elements[N * row + column]; }
    constexpr const T& operator()(std::size_t row, std::size_t column) const {
        return elements[N * row + column];
    }

    /// Returns the matrix product. Each element is added up from zero in index order. O(N^3).
    friend constexpr Matrix operator*(const Matrix& left, const Matrix& right) {
        return product(left, right);
    }

    /// Compares element by element. A matrix with a NaN is unequal to itself.
    friend constexpr bool operator==(const Matrix& a, const Matrix& b) { return !differ(a, b); }
    friend constexpr bool operator!=(const Matrix& a, const Matrix& b) { return differ(a, b); }

    /// Returns the mapped position of an affine map. The products are added to the translation in
    /// the order x, y, z. Row 3 is not read, and there is no division by w.
    /// \pre N is 4; any other size does not compile
    [[nodiscard]] constexpr Point<T, 3> transformPoint(T x, T y, T z) const;

    /// Computes the inverse matrix. O(N^3).
    ///
    /// Source: Gauss-Jordan elimination in place with partial (row) pivoting, as in Press et al.,
    /// "Numerical Recipes" (1992), section 2.1.
    ///
    /// \param[out] result the inverse if the function returns true, else unspecified elements
    /// \return false as soon as the magnitude of a pivot falls below kLeastPivot
    /// \note Intended: the limit does not scale with the matrix, so a small invertible matrix is
    ///       refused; a reader would expect a relative limit.
    bool inverse(Matrix& result) const;

    /// Smallest magnitude of a pivot that inverse() accepts, in the unit of the elements.
    static constexpr double kLeastPivot = 1e-6;

private:
    static constexpr Matrix product(const Matrix& left, const Matrix& right);
    static constexpr bool differ(const Matrix& a, const Matrix& b);

    [[nodiscard]] std::size_t pivotRow(std::size_t column) const;
    void swapRows(std::size_t a, std::size_t b);
    void swapColumns(std::size_t a, std::size_t b);
    void eliminate(std::size_t column);

    T elements[N * N]{};
};

template <class T, std::size_t N>
constexpr Matrix<T, N> Matrix<T, N>::identity() {
    Matrix result;
    for (std::size_t i = 0; i < N; ++i) result(i, i) = T{1};
    return result;
}

template <class T, std::size_t N>
constexpr Matrix<T, N> Matrix<T, N>::product(const Matrix& left, const Matrix& right) {
    Matrix result;
    for (std::size_t i = 0; i < N; ++i)
        for (std::size_t j = 0; j < N; ++j)
            for (std::size_t k = 0; k < N; ++k) result(i, j) = result(i, j) + left(i, k) * right(k, j);
    return result;
}

template <class T, std::size_t N>
constexpr bool Matrix<T, N>::differ(const Matrix& a, const Matrix& b) {
    for (std::size_t i = 0; i < N * N; ++i)
        if (!(a.elements[i] == b.elements[i])) return true;
    return false;
}

template <class T, std::size_t N>
constexpr Point<T, 3> Matrix<T, N>::transformPoint(T x, T y, T z) const {
    static_assert(N == 4, "a position is mapped by a matrix of dimension 4");
    const Matrix& m = *this;
    Point<T, 3> result;
    for (std::size_t i = 0; i < 3; ++i) result[i] = m(i, 3) + x * m(i, 0) + y * m(i, 1) + z * m(i, 2);
    return result;
}

template <class T, std::size_t N>
bool Matrix<T, N>::inverse(Matrix& result) const {
    Matrix& m = result;
    m = *this;
    std::size_t pivots[N];
    for (std::size_t j = 0; j < N; ++j) {
        pivots[j] = m.pivotRow(j);
        m.swapRows(pivots[j], j);
        if (std::abs(m(j, j)) < kLeastPivot) return false;
        m.eliminate(j);
    }
    // Swapped rows of the matrix are swapped columns of its inverse. Undo them from last to first.
    for (std::size_t j = N; j-- > 0;) m.swapColumns(j, pivots[j]);
    return true;
}

// Returns the row, from the diagonal down, with the largest element in the column; the first of
// equal ones.
template <class T, std::size_t N>
std::size_t Matrix<T, N>::pivotRow(std::size_t column) const {
    const Matrix& m = *this;
    std::size_t best = column;
    for (std::size_t i = column + 1; i < N; ++i)
        if (std::abs(m(i, column)) > std::abs(m(best, column))) best = i;
    return best;
}

template <class T, std::size_t N>
void Matrix<T, N>::swapRows(std::size_t a, std::size_t b) {
    if (a == b) return;
    for (std::size_t k = 0; k < N; ++k) std::swap((*this)(a, k), (*this)(b, k));
}

template <class T, std::size_t N>
void Matrix<T, N>::swapColumns(std::size_t a, std::size_t b) {
    if (a == b) return;
    for (std::size_t k = 0; k < N; ++k) std::swap((*this)(k, a), (*this)(k, b));
}

// One step of Gauss-Jordan elimination: scales the pivot row by the reciprocal of the pivot and
// subtracts its multiples from all other rows.
template <class T, std::size_t N>
void Matrix<T, N>::eliminate(std::size_t column) {
    Matrix& m = *this;
    const T reciprocal = T{1} / m(column, column);
    m(column, column) = T{1};
    for (std::size_t k = 0; k < N; ++k) m(column, k) = m(column, k) * reciprocal;
    for (std::size_t i = 0; i < N; ++i) {
        if (i == column) continue;
        const T factor = m(i, column);
        m(i, column) = T{0};
        for (std::size_t k = 0; k < N; ++k) m(i, k) = m(i, k) - factor * m(column, k);
    }
}
