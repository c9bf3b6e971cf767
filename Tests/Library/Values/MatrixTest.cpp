#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "Support/Bits.h"
#include "Support/Conversions.h"
#include "Support/SpecialValues.h"

using namespace quarn::test;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

reference::Mat4 randomMatrix(Rng& rng, int lowExponent, int highExponent) {
    reference::Mat4 m{};
    for (float& x : m) x = static_cast<float>(rng.spread(lowExponent, highExponent));
    return m;
}

void expectSameElements(const Matrix4& m, const reference::Mat4& expected) {
    for (std::size_t at = 0; at < 16; ++at) EXPECT_TRUE(sameBits(plain(m)[at], expected[at])) << at;
}

void expectTransformLikeReference(const reference::Mat4& m, float x, float y, float z) {
    const auto expected = reference::transform(m, x, y, z);
    const Point<float, 3> image = matrix(m).transformPoint(x, y, z);
    for (std::size_t k = 0; k < 3; ++k) EXPECT_TRUE(sameBits(image[k], expected[k])) << k;
}

}  // namespace

TEST(Matrix, IsZeroByDefault) {
    expectSameElements(Matrix4(), reference::Mat4{});
}

TEST(Matrix, IdentityHasOnesOnTheDiagonal) {
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j) EXPECT_EQ(Matrix4::identity()(i, j), i == j ? 1.0F : 0.0F);
}

TEST(Matrix, StandsRowByRow) {
    Matrix4 m;
    const float* elements = &m(0, 0);
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j)
            EXPECT_EQ(&m(i, j) - elements, static_cast<std::ptrdiff_t>(4 * i + j));
}

TEST(Matrix, ProductIsTheScalarOne) {
    for (int i = 0; i < seedCount(3000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        // Floats reach from 2^-149; beyond 2^128 they are infinite.
        const bool wholeRange = rng.coin();
        const reference::Mat4 a = randomMatrix(rng, wholeRange ? -150 : -5, wholeRange ? 128 : 5);
        const reference::Mat4 b = randomMatrix(rng, wholeRange ? -150 : -5, wholeRange ? 128 : 5);
        expectSameElements(matrix(a) * matrix(b), reference::product(a, b));
    }
}

TEST(Matrix, ProductOfIntegersIsExact) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::array<std::array<int, 4>, 4> a{};
        std::array<std::array<int, 4>, 4> b{};
        Matrix4 left;
        Matrix4 right;
        for (std::size_t at = 0; at < 16; ++at) {
            a[at / 4][at % 4] = rng.integer(-1000, 1000);
            b[at / 4][at % 4] = rng.integer(-1000, 1000);
            left(at / 4, at % 4) = static_cast<float>(a[at / 4][at % 4]);
            right(at / 4, at % 4) = static_cast<float>(b[at / 4][at % 4]);
        }
        const Matrix4 product = left * right;
        for (std::size_t row = 0; row < 4; ++row)
            for (std::size_t column = 0; column < 4; ++column) {
                int sum = 0;
                for (std::size_t k = 0; k < 4; ++k) sum += a[row][k] * b[k][column];
                EXPECT_EQ(product(row, column), static_cast<float>(sum));
            }
        EXPECT_EQ(left * Matrix4::identity(), left);
        EXPECT_EQ(Matrix4::identity() * left, left);
    }
}

TEST(Matrix, EqualityComparesElementByElement) {
    for (std::size_t at = 0; at < 16; ++at) {
        Matrix4 m = Matrix4::identity();
        EXPECT_TRUE(m == Matrix4::identity());
        m(at / 4, at % 4) += 0x1p-23F;
        EXPECT_FALSE(m == Matrix4::identity()) << at;
        EXPECT_TRUE(m != Matrix4::identity()) << at;
        m(at / 4, at % 4) = kNaN;
        EXPECT_FALSE(m == m) << at;
        EXPECT_TRUE(m != m) << at;
    }
    Matrix4 negativeZero;
    negativeZero(1, 2) = -0.0F;
    EXPECT_TRUE(negativeZero == Matrix4());
}

TEST(Matrix, TransformPointIsTheScalarOne) {
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const bool wholeRange = rng.coin();
        const int low = wholeRange ? -150 : -5;
        const int high = wholeRange ? 128 : 5;
        const reference::Mat4 m = randomMatrix(rng, low, high);
        const auto x = static_cast<float>(rng.spread(low, high));
        const auto y = static_cast<float>(rng.spread(low, high));
        expectTransformLikeReference(m, x, y, static_cast<float>(rng.spread(low, high)));
    }
}

TEST(Matrix, TransformPointOfSpecialValuesIsTheScalarOne) {
    Rng rng(1);
    const reference::Mat4 usual = randomMatrix(rng, -2, 2);
    for (const double special : kSpecialValues) {
        const auto value = static_cast<float>(special);
        SCOPED_TRACE(special);
        expectTransformLikeReference(usual, value, 2.0F, 3.0F);
        expectTransformLikeReference(usual, 1.0F, value, 3.0F);
        expectTransformLikeReference(usual, 1.0F, 2.0F, value);
        for (std::size_t at = 0; at < 16; ++at) {
            reference::Mat4 m = usual;
            m[at] = value;
            expectTransformLikeReference(m, 1.0F, -2.0F, 0.0F);
            expectSameElements(matrix(m) * matrix(usual), reference::product(m, usual));
            expectSameElements(matrix(usual) * matrix(m), reference::product(usual, m));
        }
    }
}

TEST(Matrix, TransformPointStartsFromTheTranslation) {
    // 2^25 + 1 + (-2^25) is 0 in floats; added last, the translation would leave the 1.
    Matrix4 m = Matrix4::identity();
    m(0, 3) = 0x1p25F;
    m(0, 1) = 1.0F;
    m(0, 0) = 1.0F;
    m(0, 2) = 1.0F;
    EXPECT_EQ(m.transformPoint(1.0F, 0.0F, -0x1p25F)[0], 0.0F);
    EXPECT_EQ(m.transformPoint(-0x1p25F, 0.0F, 1.0F)[0], 1.0F);
}

TEST(Matrix, TransformPointDoesNotReadTheLastRow) {
    Matrix4 m = Matrix4::identity();
    for (std::size_t j = 0; j < 4; ++j) m(3, j) = kNaN;
    EXPECT_EQ(m.transformPoint(1.0F, 2.0F, 3.0F), (Point<float, 3>(1.0F, 2.0F, 3.0F)));
}
