#include <gtest/gtest.h>

#include <string>

#include <QuarnKit/Base/Error.h>

namespace quarn::test {
namespace {

TEST(Error, TextStatesPlaceFindingAndExpectation) {
    const Error error({.found = "found x", .expected = "y", .file = "a.obj", .line = 3});
    EXPECT_STREQ(error.what(), "a.obj:3: found x, expected y");
    EXPECT_STREQ(Error({.found = "found x"}).what(), "found x");
}

TEST(Error, AtChangesThePlaceAlone) {
    const Error error(
        {.kind = ErrorKind::SystemFailure, .found = "found x", .remedy = {.kind = RemedyKind::CheckMesh}});
    const Error moved = error.at("b.xml", 5);
    EXPECT_STREQ(moved.what(), "b.xml:5: found x");
    EXPECT_EQ(moved.details().kind, ErrorKind::SystemFailure);
    EXPECT_EQ(moved.details().remedy.kind, RemedyKind::CheckMesh);
    EXPECT_STREQ(error.what(), "found x");
}

TEST(Error, WithAddsARemedy) {
    const Error error = Error({.found = "found x"}).with({.kind = RemedyKind::RepairFile, .file = "a.obj"});
    EXPECT_EQ(error.details().remedy.kind, RemedyKind::RepairFile);
    EXPECT_EQ(error.details().remedy.file, "a.obj");
}

TEST(Error, IsAStandardException) {
    const std::exception& base = Error({.found = "found x"});
    EXPECT_STREQ(base.what(), "found x");
}

TEST(WithLocation, PrecedesTheText) {
    EXPECT_EQ(withLocation("a.xml", 7, "x"), "a.xml:7: x");
    EXPECT_EQ(withLocation("a.xml", 0, "x"), "a.xml: x");
    EXPECT_EQ(withLocation("", 0, "x"), "x");
}

}  // namespace
}  // namespace quarn::test
