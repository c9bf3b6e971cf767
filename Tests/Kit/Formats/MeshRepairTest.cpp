#include <QuarnKit/Formats/ScreenReader.h>

#include <gmock/gmock.h>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/MeshStatus.h>
#include <QuarnKit/Formats/ObjPartReader.h>
#include <QuarnScreen/OBJScreen.h>

#include "Support/TemporaryFile.h"

namespace quarn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::ThrowsMessage;

constexpr std::uint64_t kEnoughMemory = 100U << 20U;

class Notices : public Observer {
public:
    void notify(const Notice& notice) override {
        texts.push_back(std::to_string(notice.line) + " " + notice.text);
    }
    std::vector<std::string> texts;
};

Screen read(const std::string& text, const ObjOptions& options, Observer& observer,
            const std::string& name = "a.obj") {
    const TemporaryFile file(text, name);
    return readScreen(file.path(), kEnoughMemory, options, observer);
}

const std::string kVertices = "v 0 0 0\nv 1 0 0\nv 0 0 1\n";
const std::string kBare = kVertices + "vt 0 0\nvt 1 0\nvt 0 1\nf 1/1 2/2 3/3 # one\nf 1 3 2";

TEST(MeshRepair, NothingIsRepairedUnlessItIsRequired) {
    Notices notices;
    EXPECT_THAT([&] { static_cast<void>(read(kBare, {}, notices)); },
                ThrowsMessage<Error>(HasSubstr(":8: found a face line")));
    EXPECT_THAT(notices.texts, ElementsAre());
}

TEST(MeshRepair, ARepairedScreenListsItsRepairsAndNotifiesOfThem) {
    Notices notices;
    const Screen screen = read(kBare, {.repair = RepairPolicy::Repair}, notices);
    EXPECT_THAT(notices.texts,
                ElementsAre("8 repaired 1 face line without a line feed", "7 repaired 1 comment after a face",
                            "7 repaired 6 corners without a normal"));
    ASSERT_EQ(screen.repairs.size(), 3U);
    EXPECT_EQ(screen.repairs.back().name, "missing-normal");
    EXPECT_EQ(screen.repairs.back().count, 6U);
    EXPECT_EQ(screen.repairs.back().line, 7U);
    EXPECT_EQ(screen.mesh->counts.triangles, 2U);
}

TEST(MeshRepair, TheLinesAreThoseOfTheFile) {
    Notices notices;
    const Screen screen = read(kBare, {.repair = RepairPolicy::Repair}, notices);
    EXPECT_THAT(meshStatusOf(*screen.geometry, *screen.mesh).text,
                HasSubstr("a corner without UV at line 8;"));
    EXPECT_THAT(
        [&] {
            static_cast<void>(
                read(kVertices + "f 1 2 3 # x\nv 1e38 0 0\n", {.repair = RepairPolicy::Repair}, notices));
        },
        ThrowsMessage<Error>(HasSubstr(":5: found \"1e38\"")));
}

TEST(MeshRepair, AMeshThatLoadsStays) {
    Notices notices;
    const std::string text = kVertices + "vn 0 -1 0\nf 1//1 2//1 3//1\n";
    const Screen screen = read(text, {.repair = RepairPolicy::Repair}, notices);
    EXPECT_EQ(screen.mesh->text.text, text);
    EXPECT_TRUE(screen.repairs.empty());
    EXPECT_THAT(notices.texts, ElementsAre());
}

TEST(MeshRepair, AnStlFileBecomesAnObjScreen) {
    Notices notices;
    const std::string text =
        "solid a\nfacet normal 0 0 0\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 0 1\nendloop\n"
        "endfacet\nendsolid a\n";
    const Screen screen = read(text, {.repair = RepairPolicy::Repair}, notices, "a.stl");
    EXPECT_NE(dynamic_cast<const OBJScreen*>(screen.geometry.get()), nullptr);
    EXPECT_THAT(notices.texts, ElementsAre("0 repaired an STL file in text form"));
    EXPECT_EQ(screen.repairs.at(0).name, "stl-text-form");
}

TEST(MeshRepair, OtherScreensAreReadAsWithoutIt) {
    Notices notices;
    const std::string xml =
        "<ScreenGeometry ClassType='class FlatScreen'><Screen_Width>4</Screen_Width>"
        "<Screen_Height>3</Screen_Height></ScreenGeometry>";
    EXPECT_EQ(read(xml, {.repair = RepairPolicy::Repair}, notices).geometry->getType(), "class FlatScreen");
    EXPECT_THAT(notices.texts, ElementsAre());
    EXPECT_THAT(
        [&] { static_cast<void>(read(xml, {.objects = {"A"}}, notices)); },
        ThrowsMessage<Error>(HasSubstr("found the name of an object for a screen that is not an OBJ mesh")));
}

TEST(MeshRepair, OnlyTheSelectedObjectsAreReadAndRepaired) {
    Notices notices;
    const std::string text = kVertices + "vn 0 -1 0\no A\nf 1//1 2//1 3//1\no B\nf 1 2 99\n";
    EXPECT_EQ(read(text, {.objects = {"A"}}, notices).mesh->counts.triangles, 1U);
    EXPECT_THAT([&] { static_cast<void>(read(text, {.objects = {"B"}}, notices)); },
                ThrowsMessage<Error>(HasSubstr(":8: found \"1\" as a corner")));
    EXPECT_EQ(read(text, {.repair = RepairPolicy::Repair, .objects = {"A"}}, notices).repairs.size(), 0U);
    const TemporaryFile file(text, "a.obj");
    EXPECT_EQ(readObjParts(file.path(), kEnoughMemory, notices).size(), 2U);
}

}  // namespace
}  // namespace quarn::test
