#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "Support/Bits.h"
#include "Support/Conversions.h"
#include "Support/SpecialValues.h"

using namespace quarn::test;

namespace {

using Order = std::array<std::size_t, 4>;

bool expectLikeReference(const reference::Mat4& m) {
    Matrix4 result;
    reference::Mat4 expected{};
    const bool inverted = matrix(m).inverse(result);
    EXPECT_EQ(inverted, reference::inverse(m, expected));
    // Also where there is none: the elimination has gone as far as it has.
    for (std::size_t at = 0; at < 16; ++at) EXPECT_TRUE(sameBits(plain(result)[at], expected[at])) << at;
    return inverted;
}

Matrix4 diagonal(float a, float b, float c, float d) {
    Matrix4 m;
    m(0, 0) = a;
    m(1, 1) = b;
    m(2, 2) = c;
    m(3, 3) = d;
    return m;
}

// Determinant of the three rows and columns that remain without one of each.
long double minorOf(const Matrix4& m, std::size_t row, std::size_t column) {
    const auto element = [&](std::size_t i, std::size_t j) -> long double {
        return m(i < row ? i : i + 1, j < column ? j : j + 1);
    };
    long double sum = 0.0L;
    for (std::size_t j = 0; j < 3; ++j) {
        const std::size_t k = (j + 1) % 3;
        const std::size_t l = (j + 2) % 3;
        sum += element(0, j) * (element(1, k) * element(2, l) - element(1, l) * element(2, k));
    }
    return sum;
}

// The inverse by cofactors, in long double.
std::array<std::array<long double, 4>, 4> inverseByCofactors(const Matrix4& m) {
    long double determinant = 0.0L;
    std::array<std::array<long double, 4>, 4> result{};
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j) {
            result[j][i] = ((i + j) % 2 == 0 ? 1.0L : -1.0L) * minorOf(m, i, j);
            if (i == 0) determinant += m(i, j) * result[j][i];
        }
    for (auto& row : result)
        for (long double& x : row) x /= determinant;
    return result;
}

// Greatest sum of magnitudes along a row.
template <class Element>
long double norm(Element element) {
    long double greatest = 0.0L;
    for (std::size_t i = 0; i < 4; ++i) {
        long double sum = 0.0L;
        for (std::size_t j = 0; j < 4; ++j) sum += std::abs(static_cast<long double>(element(i, j)));
        greatest = std::max(greatest, sum);
    }
    return greatest;
}

}  // namespace

TEST(MatrixInverse, SmallPivotFailsAlthoughTheMatrixIsInvertible) {
    Matrix4 result;
    EXPECT_FALSE(diagonal(1e-7F, 1.0F, 1.0F, 1.0F).inverse(result));
    EXPECT_FALSE(diagonal(1.0F, 1.0F, 1.0F, -1e-7F).inverse(result));
}

TEST(MatrixInverse, LeastPivotIsPinnedOnBothSides) {
    const float limit = 1e-6F;  // just below the decimal number
    ASSERT_LT(limit, 1e-6);
    for (const float sign : {1.0F, -1.0F}) {
        Matrix4 result;
        EXPECT_FALSE(diagonal(1.0F, sign * 0.99e-6F, 1.0F, 1.0F).inverse(result));
        EXPECT_FALSE(diagonal(1.0F, sign * limit, 1.0F, 1.0F).inverse(result));
        EXPECT_TRUE(diagonal(1.0F, sign * std::nextafter(limit, 1.0F), 1.0F, 1.0F).inverse(result));
        EXPECT_TRUE(diagonal(1.0F, sign * 1.01e-6F, 1.0F, 1.0F).inverse(result));
    }
}

TEST(MatrixInverse, OfAPermutationIsItsTranspose) {
    Order order{0, 1, 2, 3};
    do {
        Matrix4 m;
        Matrix4 transpose;
        for (std::size_t i = 0; i < 4; ++i) m(i, order[i]) = transpose(order[i], i) = 1.0F;
        Matrix4 result;
        EXPECT_TRUE(m.inverse(result));
        EXPECT_EQ(result, transpose);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(MatrixInverse, OfScaleAndTranslationIsExact) {
    Matrix4 m = diagonal(2.0F, -4.0F, 0.5F, 1.0F);
    Matrix4 expected = diagonal(0.5F, -0.25F, 2.0F, 1.0F);
    const std::array shift{8.0F, 16.0F, -3.0F};
    for (std::size_t i = 0; i < 3; ++i) {
        m(i, 3) = shift[i];
        expected(i, 3) = -shift[i] * expected(i, i);
    }
    Matrix4 result;
    EXPECT_TRUE(m.inverse(result));
    EXPECT_EQ(result, expected);
}

TEST(MatrixInverse, MayBeWrittenOverTheMatrix) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Matrix4 m;
        for (std::size_t at = 0; at < 16; ++at)
            m(at / 4, at % 4) = static_cast<float>(rng.uniform(-1.0, 1.0));
        Matrix4 apart;
        const bool inverted = m.inverse(apart);
        EXPECT_EQ(m.inverse(m), inverted);
        for (std::size_t at = 0; at < 16; ++at) EXPECT_TRUE(sameBits(plain(m)[at], plain(apart)[at]));
    }
}

TEST(MatrixInverse, FirstOfEqualPivotsIsTaken) {
    // Rows 0 and 1 tie in column 0. A swap would round the quotients by 3 and 7 in another order.
    reference::Mat4 m{3.0F, 7.0F, 1.0F, 0.0F, -3.0F, 5.0F, 2.0F, 0.0F,  //
                      3.0F, 1.0F, 9.0F, 0.0F, 0.0F,  0.0F, 0.0F, 1.0F};
    EXPECT_TRUE(expectLikeReference(m));
    // Singular after the first column, so the order of the rows stays visible in what is left.
    reference::Mat4 singular{1.0F, 0.0F, 0.0F, 5.0F, 1.0F, 0.0F, 0.0F, 6.0F,  //
                             1.0F, 0.0F, 0.0F, 7.0F, 0.0F, 0.0F, 0.0F, 1.0F};
    Matrix4 result;
    EXPECT_FALSE(matrix(singular).inverse(result));
    EXPECT_EQ(result(0, 3), 5.0F);
    EXPECT_EQ(result(1, 3), 1.0F);
    EXPECT_EQ(result(2, 3), 2.0F);
}

TEST(MatrixInverse, IsTheScalarElimination) {
    int inverted = 0;
    int refused = 0;
    for (int i = 0; i < seedCount(20000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const bool wholeRange = rng.integer(0, 3) == 0;
        const bool integers = rng.coin();  // zeros and ties among the pivots
        reference::Mat4 m{};
        for (float& x : m)
            x = integers ? static_cast<float>(rng.integer(-2, 2))
                         : static_cast<float>(wholeRange ? rng.spread(-150, 128) : rng.spread(-22, 3));
        ++(expectLikeReference(m) ? inverted : refused);
    }
    EXPECT_GT(inverted, 1000);
    EXPECT_GT(refused, seedCount(1000));
}

TEST(MatrixInverse, AnswersSpecialValuesAsTheScalarEliminationDoes) {
    Rng rng(7);
    reference::Mat4 usual{};
    for (float& x : usual) x = static_cast<float>(rng.uniform(-2.0, 2.0));
    for (std::size_t i = 0; i < 16; ++i)
        for (const double first : kSpecialValues)
            for (std::size_t j = i; j < 16; ++j)
                for (const double second : kSpecialValues) {
                    reference::Mat4 m = usual;
                    m[i] = static_cast<float>(first);
                    m[j] = static_cast<float>(second);
                    expectLikeReference(m);
                }
}

TEST(MatrixInverse, NaNPassesEveryTest) {
    Matrix4 m;
    for (std::size_t at = 0; at < 16; ++at) m(at / 4, at % 4) = std::numeric_limits<float>::quiet_NaN();
    Matrix4 result;
    EXPECT_TRUE(m.inverse(result));
    EXPECT_TRUE(std::isnan(result(2, 1)));
}

TEST(MatrixInverse, IsTheMathematicalOneWithinItsErrorBound) {
    // Gauss-Jordan errs by about n growth roundings, times the condition number; with n = 4 and a
    // growth of at most 8 by pivoting, twice for the way back.
    constexpr long double kRoundings = 64.0L * 0x1p-24L;
    int compared = 0;
    for (int i = 0; i < seedCount(3000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Matrix4 m;
        for (std::size_t at = 0; at < 16; ++at)
            m(at / 4, at % 4) = static_cast<float>(rng.uniform(-1.0, 1.0));
        const auto exact = inverseByCofactors(m);
        const long double size = norm([&](std::size_t r, std::size_t c) { return exact[r][c]; });
        const long double condition = size * norm([&](std::size_t r, std::size_t c) { return m(r, c); });
        if (condition > 1000.0L) continue;
        ++compared;
        Matrix4 result;
        ASSERT_TRUE(m.inverse(result));
        const long double error =
            norm([&](std::size_t r, std::size_t c) { return result(r, c) - exact[r][c]; });
        EXPECT_LE(error, kRoundings * condition * size);
    }
    EXPECT_GT(compared, seedCount(2000));
}
