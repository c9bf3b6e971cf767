#include "Reports/CheckReport.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

using namespace quarn;

namespace {

tool::CheckReport reportWith(Finding finding) {
    return {.file = "wall.obj", .unit = "m", .triangles = 24, .findings = {std::move(finding)}};
}

Finding finding() {
    return {.name = "hole", .count = 2, .places = {{7, 12}, {9, 14}}, .text = "2 holes", .hint = "fill them"};
}

}  // namespace

TEST(CheckReport, StatesThatNothingWasFound) {
    EXPECT_EQ(tool::reportText({.file = "wall.obj", .unit = "m", .triangles = 1}),
              "no findings in 1 triangle\n");
}

TEST(CheckReport, HasALineForEachFinding) {
    EXPECT_EQ(tool::reportText(reportWith(finding())),
              "wall.obj:12: 2 holes: triangles 7, 9 (fill them)\n1 finding in 24 triangles\n");
}

TEST(CheckReport, SaysWhereThereAreMoreTriangles) {
    Finding more = finding();
    more.count = 3;
    EXPECT_EQ(tool::reportText(reportWith(more))
                  .find("wall.obj:12: 2 holes: triangles 7, 9 and more (fill them)\n"),
              0U);
    more = finding();
    more.isCountExact = false;
    EXPECT_EQ(tool::reportText(reportWith(more))
                  .find("wall.obj:12: 2 holes: triangles 7, 9 and more (fill them)\n"),
              0U);
}

TEST(CheckReport, LeavesOutWhatIsNotKnown) {
    Finding bare = finding();
    bare.places.clear();
    EXPECT_EQ(tool::reportText(reportWith(bare)).find("wall.obj: 2 holes (fill them)\n"), 0U);
    bare.places = {{0, 5}};
    EXPECT_EQ(tool::reportText(reportWith(bare)).find("wall.obj:5: 2 holes (fill them)\n"), 0U);
    bare.places = {{5, 0}};
    EXPECT_NE(tool::reportJson(reportWith(bare)).text().find(R"("places":[{"triangle":5,"line":null}])"),
              std::string::npos);
}

TEST(CheckReport, NotesAreNoProblems) {
    Finding note = finding();
    note.severity = Severity::Note;
    EXPECT_EQ(reportWith(note).problemCount(), 0U);
    EXPECT_EQ(reportWith(finding()).problemCount(), 1U);
    EXPECT_EQ(tool::reportText(reportWith(note)),
              "wall.obj:12: note: 2 holes: triangles 7, 9 (fill them)\nno findings in 24 triangles\n");
}
