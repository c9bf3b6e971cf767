/// \file
/// Square matrices.
#pragma once

#include <cmath>
#include <cstddef>
#include <utility>

#include <QuarnScreen/Point.h>

/// N by N numbers, stored row by row; all zero by default.
///
/// Matrix<float, 4> is the instance in use: an affine map whose column 3 is the translation. All arithmetic
/// is done in T. Thread-safety: that of a value.
template <class T, std::size_t N>
class Matrix {
public:
    /// Ones on the diagonal, zeros elsewhere.
    [[nodiscard]] static constexpr Matrix identity();

    /// Element of a row and a column, from 0.
    /// \pre both are below N; it is not checked.
    constexpr T& operator()(std::size_t row, std::size_t column) { return elements[N * row + column]; }
    constexpr const T& operator()(std::size_t row, std::size_t column) const {
        return elements[N * row + column];
    }

    /// Matrix product, each element added up from zero along the row.
    friend constexpr Matrix operator*(const Matrix& left, const Matrix& right) {
        return product(left, right);
    }

    /// Element by element; a matrix that holds a NaN is unequal to itself.
    friend constexpr bool operator==(const Matrix& a, const Matrix& b) { return !differ(a, b); }
    friend constexpr bool operator!=(const Matrix& a, const Matrix& b) { return differ(a, b); }

    /// The mapped position: translation first, then x, y and z. Row 3 is not read and nothing is divided by
    /// w.
    [[nodiscard]] constexpr Point<T, 3> transformPoint(T x, T y, T z) const;

    /// Writes the inverse matrix. Source: Gauss-Jordan elimination in place with row pivoting.
    ///
    /// \param[out] result left half done where the answer is false
    /// \return false as soon as a pivot's magnitude falls below kLeastPivot. Intended: the limit does not
    ///        follow the matrix's scale, so a small invertible matrix is refused.
    bool inverse(Matrix& result) const;

    /// Least magnitude of a pivot, in the unit of the elements.
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
    // Exchanged rows of the matrix are exchanged columns of its inverse, undone from the last to the first.
    for (std::size_t j = N; j-- > 0;) m.swapColumns(j, pivots[j]);
    return true;
}

// Row at or below the diagonal whose element in the column is greatest; the first of equal ones.
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

// One step of Gauss-Jordan: the pivot becomes its reciprocal's row, all other rows lose their part of it.
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
