#include <gmock/gmock.h>

#include <array>
#include <string>
#include <variant>
#include <vector>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnKit/Formats/ScreenWriter.h>

#include "Support/TemporaryFile.h"

namespace quarn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr std::uint64_t kEnoughMemory = 100U << 20U;

class Events : public Observer {
public:
    void setStage(const std::string& stage) override { texts.push_back("stage " + stage); }
    void notify(const Notice& notice) override {
        texts.push_back(std::to_string(notice.line) + " " + notice.text);
    }
    std::vector<std::string> texts;
};

const std::string kVertices = "v 0 0 0\nv 1 0 0\nv 1 0 1\nv 0 0 1\nvn 0 -1 0\n";
const std::string kUVs = "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n";

// Meshes of each status, and texts that do not load.
const std::vector<std::string> kTexts = {
    kVertices + kUVs + "f 1/1/1 2/2/1 3/3/1 4/4/1\n",
    kVertices + kUVs + "f 1/1/1 2/2/1 \\\n3/3/1\nf 1/1/1 3/3/1 4/4/1\n",
    kVertices + "f 1//1 2//1 3//1 4//1\n",
    kVertices + kUVs + "f 1/1/1 2/2/1 3/3/1\nf 1//1 3//1 4//1\n",
    kVertices + "vt 0 0\nvt 2 0\nvt 2 1\nvt 0 1\nf 1/1/1 2/2/1 3/3/1 4/4/1\n",
    kVertices + kUVs + "v 5 0 0\nv 6 0 0\nv 6 0 1\nf 1/1/1 2/2/1 3/3/1 4/4/1\nf 5/1/1 6/2/1 7/3/1\n",
    kVertices + kUVs + "f 1/1/1 2/2/1 3/3/1\nf 1/1/1 2/2/1 3/3/1\n",
    "v 1e6 0 0\nv 1000001 0 0\nv 1e6 0 1\nvn 0 1 0\nf 1//1 2//1 3//1\n",
    kVertices + kUVs + "f 1/1 2/2 3/3\nf 1/1 3/3 4/4\n",
    kVertices + "f 1//1 2//1 9//1\n",
    kVertices + "v 1,5 0 0\nf 1//1 2//1 5//1\n",
    kVertices,
    "v 0 0 0\nv 1e38 0 0\nv 0 0 1\nvn 0 1 0\nf 1//1 2//1 3//1\n",
};

// All that a reader reports of a text.
struct Reading {
    std::vector<std::string> events;
    std::string error = {};
    std::vector<Triangle> triangles = {};
    OBJScreen::Status status = OBJScreen::StatusFileNotOpened;
    bool hasUV = false;
    std::string text = {};
    std::uint64_t uvCount = 0;
};

Reading readIndexed(const std::string& path, const ObjOptions& options) {
    Events events;
    Reading reading;
    try {
        const Screen screen = readScreen(path, kEnoughMemory, options, events);
        const auto& mesh = dynamic_cast<const OBJScreen&>(*screen.geometry);
        mesh.getTesselation(reading.triangles);
        reading.status = mesh.getStatus();
        reading.hasUV = mesh.hasParameterization();
        reading.text = screen.mesh->text.text;
        reading.uvCount = screen.mesh->counts.uvs;
    } catch (const Error& error) {
        reading.error = error.what();
    }
    reading.events = events.texts;
    return reading;
}

Reading readUnindexed(const std::string& path, const ObjOptions& options) {
    Events events;
    Reading reading;
    try {
        UnindexedScreen screen = readUnindexedScreen(path, kEnoughMemory, options, events);
        // The text stays where it is.
        const auto mesh = std::move(std::get<UnindexedMesh>(screen));
        reading.triangles = mesh.triangles;
        reading.status = mesh.status;
        reading.hasUV = mesh.hasUV();
        reading.text = mesh.source.text.text;
        reading.uvCount = mesh.source.counts.uvs;
    } catch (const Error& error) {
        reading.error = error.what();
    }
    reading.events = events.texts;
    return reading;
}

void expectSameTriangles(const std::vector<Triangle>& a, const std::vector<Triangle>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i)
        for (std::size_t corner = 0; corner < 3; ++corner) {
            EXPECT_EQ(a[i].vertices.at(corner).position, b[i].vertices.at(corner).position);
            EXPECT_EQ(a[i].vertices.at(corner).uv, b[i].vertices.at(corner).uv);
            EXPECT_EQ(a[i].vertices.at(corner).normal, b[i].vertices.at(corner).normal);
        }
}

TEST(UnindexedMesh, EqualsTheScreenOfTheSameText) {
    const std::array<ObjOptions, 3> options = {
        ObjOptions(), ObjOptions{.repair = RepairPolicy::Repair},
        ObjOptions{.forward = "-Z", .upward = "Y", .scale = 0.001F, .repair = RepairPolicy::Repair}};
    for (const std::string& text : kTexts) {
        const TemporaryFile file(text, "a.obj");
        for (const ObjOptions& each : options) {
            SCOPED_TRACE(text);
            const Reading expected = readIndexed(file.path(), each);
            const Reading reading = readUnindexed(file.path(), each);
            EXPECT_EQ(reading.error, expected.error);
            EXPECT_EQ(reading.events, expected.events);
            EXPECT_EQ(reading.status, expected.status);
            EXPECT_EQ(reading.hasUV, expected.hasUV);
            EXPECT_EQ(reading.text, expected.text);
            EXPECT_EQ(reading.uvCount, expected.uvCount);
            expectSameTriangles(reading.triangles, expected.triangles);
        }
    }
}

TEST(UnindexedMesh, ExistsForOBJTextsOnly) {
    const TemporaryFile file(
        "<ScreenGeometry ClassType='class FlatScreen'><Screen_Width>1</Screen_Width>"
        "<Screen_Height>1</Screen_Height></ScreenGeometry>",
        "a.xml");
    Observer ignored;
    EXPECT_TRUE(std::holds_alternative<Screen>(readUnindexedScreen(file.path(), kEnoughMemory, {}, ignored)));
}

TEST(UnindexedMesh, IsWrittenWithTheContinuedLinesOfItsFile) {
    const TemporaryFile file(kTexts.at(1), "a.obj");
    Observer ignored;
    const auto screen = readUnindexedScreen(file.path(), kEnoughMemory, {}, ignored);
    EXPECT_EQ(objTextOf(std::get<UnindexedMesh>(screen)), kTexts.at(1));
}

TEST(GeneratedText, ComesBackWithANoticeIfUVDoesNotWork) {
    Events events;
    EXPECT_EQ(verifyGeneratedText("a.obj", kTexts.at(0), kEnoughMemory, events), kTexts.at(0));
    EXPECT_THAT(events.texts, ElementsAre(HasSubstr("building")));
    events.texts.clear();
    EXPECT_EQ(verifyGeneratedText("a.obj", kTexts.at(2), kEnoughMemory, events), kTexts.at(2));
    EXPECT_THAT(events.texts, ElementsAre(HasSubstr("building"), HasSubstr("no vt line")));
}

}  // namespace
}  // namespace quarn::test
