#include <gtest/gtest.h>
#include <pthread.h>

#include <array>
#include <system_error>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/Mesh/Meshes.h"
#include "Support/RunTogether.h"

using namespace quarn::test;

namespace {

// While it lives, no thread starts: a stack of the default size is more than a process can address.
class NoNewThreads {
public:
    NoNewThreads() {
        EXPECT_EQ(pthread_getattr_default_np(&usual), 0);
        pthread_attr_t huge;
        EXPECT_EQ(pthread_getattr_default_np(&huge), 0);
        EXPECT_EQ(pthread_attr_setstacksize(&huge, std::size_t{1} << 60U), 0);
        EXPECT_EQ(pthread_setattr_default_np(&huge), 0);
        pthread_attr_destroy(&huge);
    }
    NoNewThreads(const NoNewThreads&) = delete;
    NoNewThreads& operator=(const NoNewThreads&) = delete;
    ~NoNewThreads() {
        EXPECT_EQ(pthread_setattr_default_np(&usual), 0);
        pthread_attr_destroy(&usual);
    }

private:
    pthread_attr_t usual{};
};

}  // namespace

TEST(ObjScreenThreads, TwoScreensLoadSideBySide) {
    const std::array texts = {objTextOf(wave({20, 10})), objTextOf(dome({10, 10}))};
    std::array<ReferenceObjScreen, 2> plain;
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
    ReferenceObjScreen plain;
    const std::string text = objTextOf(wave({20, 10}));
    EXPECT_EQ(loadInto(screen, text), plain.load(text));
    std::array<bool, 4> isSame{};
    runTogether(4, [&](int thread) {
        isSame[static_cast<std::size_t>(thread)] = static_cast<bool>(isLike(screen, plain));
    });
    EXPECT_EQ(isSame, (std::array{true, true, true, true}));
}

TEST(ObjScreenThreads, LoadWhoseThreadsDoNotStartRaisesTheErrorOfTheSystem) {
    OpenObjScreen screen;
    ReferenceObjScreen plain;
    for (int load = 0; load < 2; ++load) {
        {
            const NoNewThreads none;
            try {
                (void)loadInto(screen, squareAt('3'));
                ADD_FAILURE() << "nothing was thrown";
            } catch (const std::system_error& error) {
                EXPECT_EQ(error.code(), std::errc::resource_unavailable_try_again);
            }
        }
        EXPECT_FALSE(screen.hasTesselation());
        EXPECT_TRUE(screen.outline().points.empty());
        EXPECT_EQ(screen.getStatus(), plain.status);
        EXPECT_EQ(screen.getUniqueDataHash(), plain.hash);
        EXPECT_EQ(loadInto(screen, kSquare), plain.load(kSquare));
        EXPECT_TRUE(isLike(screen, plain));
    }
}
