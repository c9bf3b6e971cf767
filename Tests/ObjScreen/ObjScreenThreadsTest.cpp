#include <gtest/gtest.h>

#include <array>

#include "ObjScreenCases.h"
#include "Support/Meshes.h"
#include "Support/RunTogether.h"

using namespace quarn::test;

TEST(ObjScreenThreads, TwoScreensLoadSideBySide) {
    const std::array texts = {objTextOf(wave({20, 10})), objTextOf(dome({10, 10}))};
    std::array<PlainObjScreen, 2> plain;
    for (std::size_t i = 0; i < texts.size(); ++i) EXPECT_EQ(plain[i].load(texts[i]), kLoaded);
    for (int round = 0; round < 5; ++round) {
        SCOPED_TRACE(round);
        std::array<OpenObjScreen, 2> screens;
        std::array<int, 2> loads{};
        runTogether(2, [&](int thread) {
            const auto i = static_cast<std::size_t>(thread);
            for (int k = 0; k < 3; ++k) {
                if (loadInto(screens[i], kNormal) == kNoVertices) ++loads[i];
                if (loadInto(screens[i], texts[i]) == kLoaded) ++loads[i];
            }
        });
        for (std::size_t i = 0; i < texts.size(); ++i) {
            EXPECT_EQ(loads[i], 6);
            EXPECT_TRUE(isLike(screens[i], plain[i]));
        }
    }
}

TEST(ObjScreenThreads, LoadedScreenAnswersSeveralThreads) {
    OpenObjScreen screen;
    PlainObjScreen plain;
    const std::string text = objTextOf(wave({20, 10}));
    EXPECT_EQ(loadInto(screen, text), plain.load(text));
    std::array<bool, 4> isSame{};
    runTogether(4, [&](int thread) {
        isSame[static_cast<std::size_t>(thread)] = static_cast<bool>(isLike(screen, plain));
    });
    EXPECT_EQ(isSame, (std::array{true, true, true, true}));
}
