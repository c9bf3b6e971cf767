#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include <QuarnScreen/OBJScreen.h>

#include "Support/Bits.h"
#include "Support/Conversions.h"

using namespace quarn::test;
using namespace std::string_literals;

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
const std::vector<std::wstring> kSignedAxes = {L"X", L"-X", L"Y", L"-Y", L"Z", L"-Z"};

using Vec3f = std::array<float, 3>;

// An axis by its last and first character.
Vec3f axis(const std::wstring& name) {
    Vec3f result{};
    if (name.empty()) return result;
    const std::size_t index = std::wstring(L"XYZ").find(name[name.size() - 1]);
    if (index != std::wstring::npos) result[index] = name[0] == L'-' ? -1.0F : 1.0F;
    return result;
}

Vec3f crossed(const Vec3f& a, const Vec3f& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

reference::Mat4 referenceTransform(const std::wstring& forward, const std::wstring& upward, float scale) {
    const Vec3f f = axis(forward);
    const Vec3f u = axis(upward);
    const Vec3f s = crossed(f, u);
    const reference::Mat4 m = {s[0], f[0], u[0], 0, s[1], f[1], u[1], 0, s[2], f[2], u[2], 0, 0, 0, 0, 1};
    const reference::Mat4 scaling = {scale, 0, 0, 0, 0, scale, 0, 0, 0, 0, scale, 0, 0, 0, 0, 1};
    reference::Mat4 inverted{};
    (void)reference::inverse(m, inverted);
    return reference::product(inverted, scaling);
}

void expectLikeReference(const std::wstring& forward, const std::wstring& upward, float scale) {
    const reference::Mat4 actual = plain(OBJScreen::getTransformMatrix(forward, upward, scale));
    const reference::Mat4 expected = referenceTransform(forward, upward, scale);
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_TRUE(sameBits(actual[i], expected[i]))
            << "element " << i << " for axes " << ::testing::PrintToString(forward) << " and "
            << ::testing::PrintToString(upward) << ", scale " << scale;
}

float dotted(const Vec3f& a, const Vec3f& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

}  // namespace

TEST(ObjTransformMatrix, DefaultAxesGiveTheIdentity) {
    EXPECT_EQ(OBJScreen::getTransformMatrix(L"Y", L"Z", 1.0F), (Matrix4::identity()));
}

TEST(ObjTransformMatrix, AllSignedAxesAreLikeTheReference) {
    for (const std::wstring& forward : kSignedAxes)
        for (const std::wstring& upward : kSignedAxes)
            for (const float scale :
                 {1.0F, 2.5F, -0.3F, 0.0F, -0.0F, 1e-30F, 1e30F, kInfinity, std::nanf("")})
                expectLikeReference(forward, upward, scale);
}

TEST(ObjTransformMatrix, OddNamesAreLikeTheReference) {
    const std::vector<std::wstring> names = {L"",   L"-",        L"+Y",    L"--Y",  L"y",
                                             L"-z", L"Y ",       L" -Y",   L"-aX",  L"X-Y",
                                             L"YX", L"-\u00DCZ", L"-X\0"s, L"\0Z"s, L"\u2212X"};
    for (const std::wstring& name : names) {
        for (const std::wstring& other : kSignedAxes) {
            expectLikeReference(name, other, 2.0F);
            expectLikeReference(other, name, -2.0F);
        }
        for (const std::wstring& other : names) expectLikeReference(name, other, 1.0F);
    }
}

// What follows from the mathematics, for each pair of axes across each other.
TEST(ObjTransformMatrix, PositionIsReadAlongSideForwardAndUp) {
    const Vec3f p = {3.0F, -5.0F, 7.0F};
    int pairs = 0;
    for (const std::wstring& forward : kSignedAxes)
        for (const std::wstring& upward : kSignedAxes) {
            if (forward.back() == upward.back()) continue;
            ++pairs;
            const Matrix4 m = OBJScreen::getTransformMatrix(forward, upward, 2.0F);
            const Point<float, 3> moved = m.transformPoint(p[0], p[1], p[2]);
            EXPECT_EQ(moved[0], 2.0F * dotted(crossed(axis(forward), axis(upward)), p));
            EXPECT_EQ(moved[1], 2.0F * dotted(axis(forward), p));
            EXPECT_EQ(moved[2], 2.0F * dotted(axis(upward), p));
            for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(m(i, 3), 0.0F);
        }
    EXPECT_EQ(pairs, 24);
}

TEST(ObjTransformMatrix, SignAndLetterAreFoundAtTheEnds) {
    const Matrix4 expected = OBJScreen::getTransformMatrix(L"-Y", L"Z", 1.0F);
    EXPECT_EQ(OBJScreen::getTransformMatrix(L"-anything up to Y", L"Z", 1.0F), expected);
    EXPECT_EQ(OBJScreen::getTransformMatrix(L"+Y", L"Z", 1.0F), (Matrix4::identity()));
    EXPECT_NE(OBJScreen::getTransformMatrix(L" -Y", L"Z", 1.0F), expected);
}

// The elimination stops at its first pivot, so the columns of the axes remain, scaled.
TEST(ObjTransformMatrix, AxesOfOneLetterLeaveTheMatrixOfTheAxes) {
    Matrix4 expected;
    expected(1, 1) = 3.0F;
    expected(1, 2) = -3.0F;
    expected(3, 3) = 1.0F;
    EXPECT_EQ(OBJScreen::getTransformMatrix(L"Y", L"-Y", 3.0F), expected);
    Matrix4 none;
    none(3, 3) = 1.0F;
    EXPECT_EQ(OBJScreen::getTransformMatrix(L"y", L"", 3.0F), none);
}
