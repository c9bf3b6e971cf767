#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjParser.h>

#include <climits>
#include <string>

#include "Reference/Formats/ReferenceObjNumbers.h"
#include "Support/Rng.h"

using namespace quarn;
using namespace quarn::test;

namespace {

ReferenceObjCorner scanned(const std::string& text) {
    // Values that must not stay.
    detail::ObjCorner corner{77, 78, 79};
    detail::scanCorner(text.c_str(), corner);
    return {corner.vertex, corner.textureCoordinate, corner.normal};
}

std::size_t argumentBehind(const std::string& text, std::size_t i) {
    while (byteAt(text, i) != ' ' && byteAt(text, i) != '\n' && byteAt(text, i) != '\0') ++i;
    return referenceSkipBlanks(text, i);
}

}  // namespace

// Printed by GoogleTest where two corners differ.
namespace quarn::test {
static void PrintTo(const ReferenceObjCorner& corner, std::ostream* out) {
    *out << corner.vertex << "/" << corner.textureCoordinate << "/" << corner.normal;
}
}  // namespace quarn::test

TEST(ObjCorner, IndicesCountFromZero) {
    EXPECT_EQ(scanned("1/2/3"), (ReferenceObjCorner{0, 1, 2}));
    EXPECT_EQ(scanned("100/20/7 5/5/5"), (ReferenceObjCorner{99, 19, 6}));
}

TEST(ObjCorner, WhatIsNotGivenIsMinusOne) {
    EXPECT_EQ(scanned("4"), (ReferenceObjCorner{3, -1, -1}));
    EXPECT_EQ(scanned("4/5"), (ReferenceObjCorner{3, 4, -1}));
    EXPECT_EQ(scanned("4//5"), (ReferenceObjCorner{3, -1, 4}));
    EXPECT_EQ(scanned("4/"), (ReferenceObjCorner{3, -1, -1}));
    EXPECT_EQ(scanned("4//"), (ReferenceObjCorner{3, -1, -1}));
    EXPECT_EQ(scanned("4/5/"), (ReferenceObjCorner{3, 4, -1}));
    EXPECT_EQ(scanned("/5/6"), (ReferenceObjCorner{-1, 4, 5}));
    EXPECT_EQ(scanned("//6"), (ReferenceObjCorner{-1, -1, 5}));
    EXPECT_EQ(scanned(""), (ReferenceObjCorner{-1, -1, -1}));
}

TEST(ObjCorner, NegativeIndexReadsAsNoDigits) {
    EXPECT_EQ(scanned("-1/-1/-1"), (ReferenceObjCorner{-1, -1, -1}));
    EXPECT_EQ(scanned("1/-1/1"), (ReferenceObjCorner{0, -1, -1}));
    EXPECT_EQ(scanned("+1"), (ReferenceObjCorner{-1, -1, -1}));
}

TEST(ObjCorner, BlanksAreSkippedBeforeEachNumber) {
    EXPECT_EQ(scanned("  7//8"), (ReferenceObjCorner{6, -1, 7}));
    EXPECT_EQ(scanned("7//  8"), (ReferenceObjCorner{6, -1, 7}));
    EXPECT_EQ(scanned("7/5/ 8"), (ReferenceObjCorner{6, 4, 7}));
    EXPECT_EQ(scanned("7 /5/8"), (ReferenceObjCorner{6, -1, -1}));
}

TEST(ObjCorner, BlankBehindTheFirstSlashLosesTheNormal) {
    EXPECT_EQ(scanned("7/ 5/8"), (ReferenceObjCorner{6, 4, -1}));
    EXPECT_EQ(scanned("7/ /8"), (ReferenceObjCorner{6, -1, -1}));
}

TEST(ObjCorner, LineFeedIsNotPassed) {
    EXPECT_EQ(scanned("7/\n5/8"), (ReferenceObjCorner{6, -1, -1}));
    EXPECT_EQ(scanned("7// \n5"), (ReferenceObjCorner{6, -1, -1}));
}

TEST(ObjCorner, DigitsWrapAt32Bits) {
    EXPECT_EQ(scanned("2147483648"), (ReferenceObjCorner{INT_MAX, -1, -1}));
    EXPECT_EQ(scanned("2147483649"), (ReferenceObjCorner{INT_MIN, -1, -1}));
    EXPECT_EQ(scanned("4294967297/4294967298/9223372036854775808"), (ReferenceObjCorner{0, 1, -1}));
    EXPECT_EQ(scanned("0"), (ReferenceObjCorner{-1, -1, -1}));
}

TEST(ObjCorner, RandomStringsAreScannedAsTheSpecifiedSteps) {
    constexpr std::string_view kLetters = "0123456789///  --\n\rx.";
    for (int i = 0; i < seedCount(300000); ++i) {
        Rng rng(i);
        std::string text;
        for (int k = rng.integer(0, 14); k > 0; --k)
            text += kLetters[static_cast<std::size_t>(rng.integer(0, static_cast<int>(kLetters.size()) - 1))];
        ASSERT_EQ(scanned(text), referenceObjCorner(text, 0)) << i << ": " << text;
    }
}

TEST(ObjCorner, NextCornerIsLookedForFromTheFirstByteOfThisOne) {
    constexpr std::string_view kLetters = "12///  \n";
    for (int i = 0; i < seedCount(100000); ++i) {
        Rng rng(i);
        std::string text(1, "1/"[rng.integer(0, 1)]);
        for (int k = rng.integer(0, 9); k > 0; --k)
            text += kLetters[static_cast<std::size_t>(rng.integer(0, static_cast<int>(kLetters.size()) - 1))];
        detail::ObjCorner corner;
        const auto place = static_cast<std::size_t>(detail::scanCorner(text.c_str(), corner) - text.c_str());
        ASSERT_EQ(argumentBehind(text, place), argumentBehind(text, 0)) << i << ": " << text;
    }
}
