#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <thread>
#include <type_traits>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/FixedConfig.h"

using namespace quarn::test;

static_assert(std::is_base_of_v<MeshScreen, OBJScreen>);
static_assert(!std::is_copy_constructible_v<OBJScreen>);
static_assert(!std::is_move_constructible_v<OBJScreen>);
static_assert(std::is_same_v<std::underlying_type_t<OBJScreen::Status>, int>);

namespace {

struct StatusRow {
    const char* text;
    int status;
    bool isValid;
    bool hasParameterization;
    bool hasValidParameterization;
};

const std::string kBase = kCorners + kNormal;

void expectAnswers(const OBJScreen& screen, const StatusRow& row) {
    EXPECT_EQ(screen.getStatus(), row.status);
    EXPECT_EQ(screen.isValid(), row.isValid);
    EXPECT_EQ(screen.hasParameterization(), row.hasParameterization);
    EXPECT_EQ(screen.hasValidParameterization(), row.hasValidParameterization);
}

}  // namespace

TEST(OBJScreen, NewScreenIsNotLoaded) {
    const OBJScreen screen;
    expectAnswers(screen, {"", OBJScreen::StatusNotLoaded, false, false, false});
    EXPECT_EQ(screen.getUniqueDataHash(), ScreenGeometry::DataHash{});
    EXPECT_EQ(screen.getLoadedFileContents(), "");
    EXPECT_FALSE(screen.hasTesselation());
    EXPECT_FALSE(screen.hasValidBoundary());
    EXPECT_FALSE(screen.isPlanar());
    EXPECT_EQ(screen.getEyepoint(), Point3());
}

TEST(OBJScreen, StatusesHaveTheirNumbers) {
    const std::array statuses = {
        OBJScreen::StatusOk,          OBJScreen::StatusNoParameterization, OBJScreen::StatusBadNormals,
        OBJScreen::StatusBadVertices, OBJScreen::StatusFileNotOpened,      OBJScreen::StatusNotLoaded,
        OBJScreen::StatusBadBoundary, OBJScreen::StatusUvOutOfRange};
    for (std::size_t i = 0; i < statuses.size(); ++i) EXPECT_EQ(statuses[i], static_cast<int>(i));
}

TEST(OBJScreen, EachStatusHasItsAnswers) {
    const std::string noNormal = kCorners;
    const std::string noVertex = kNormal;
    const std::string outside = kBase + "vt 0 0\nvt 1.5 0\nvt 1 1\nvt 0 1\n" + kFace;
    const StatusRow rows[] = {
        {kSquare.c_str(), 0, true, true, true},
        {kBase.c_str(), 1, true, false, false},
        {noNormal.c_str(), 2, false, false, false},
        {noVertex.c_str(), 3, false, false, false},
        {"vt 0 0\nv 0 0 0\nvn 0 0 1\n", 6, true, false, false},
        {outside.c_str(), 7, true, true, false},
    };
    for (const StatusRow& row : rows) {
        SCOPED_TRACE(row.text);
        OBJScreen screen;
        (void)loadInto(screen, row.text);
        expectAnswers(screen, row);
    }
    OBJScreen screen;
    EXPECT_EQ(endOf([&] { screen.deserializeFromFile(L"/no/such/file"); }), kNotOpened);
    expectAnswers(screen, {"", 4, false, false, false});
}

TEST(OBJScreen, TypeNameIsThatOfTheClass) {
    EXPECT_EQ(OBJScreen::type(), "class OBJScreen");
    const OpenObjScreen screen;
    EXPECT_EQ(&screen.getType(), &OBJScreen::type());
    std::array<const std::string*, 4> names{};
    {
        std::array<std::jthread, 4> threads;
        for (std::size_t i = 0; i < threads.size(); ++i)
            threads[i] = std::jthread([&names, i] { names[i] = &OBJScreen::type(); });
    }
    EXPECT_EQ(std::count(names.begin(), names.end(), &OBJScreen::type()), 4);
}

TEST(OBJScreen, ConfigChangesNothingAndIsNotRead) {
    OpenObjScreen screen;
    ReferenceObjScreen plain;
    EXPECT_EQ(loadInto(screen, kSquare), plain.load(kSquare));
    FixedConfig config(7.0, 8.0);
    screen.updateGeometry(&config);
    screen.updateGeometry(nullptr);
    EXPECT_TRUE(config.calls.empty());
    EXPECT_TRUE(isLike(screen, plain));
}

TEST(OBJScreen, ContractReachesTheScreensOwnAnswers) {
    OBJScreen screen;
    (void)loadInto(screen, kSquare);
    const IScreenGeometry& contract = screen;
    EXPECT_TRUE(contract.isValid());
    EXPECT_TRUE(contract.hasParameterization());
    EXPECT_EQ(contract.getUniqueDataHash(), screen.getUniqueDataHash());
    EXPECT_EQ(contract.getType(), "class OBJScreen");
}

TEST(OBJScreen, ContinuationsAreBlankedForAnyCaller) {
    std::string text = "a\\\nb\\\r\n\\";
    OBJScreen::replaceNewLineEscapeSequencesWithBlanks(text);
    EXPECT_EQ(text, "a  b\\\r\n\\");
}
