#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjParser.h>
#include <QuarnScreen/Detail/Obj/ObjText.h>

#include <functional>
#include <new>
#include <string>
#include <string_view>

#include "Library/Obj/ObjCases.h"

using namespace quarn;
using namespace quarn::test;

namespace {

constexpr std::string_view kLetters = "vtnf/-10 \n\\#.";

// Calls `check` with every text of exactly that many letters.
void forEachText(std::size_t length, const std::function<void(const std::string&)>& check) {
    std::size_t count = 1;
    for (std::size_t i = 0; i < length; ++i) count *= kLetters.size();
    std::string text(length, ' ');
    for (std::size_t number = 0; number < count; ++number) {
        std::size_t rest = number;
        for (char& letter : text) {
            letter = kLetters[rest % kLetters.size()];
            rest /= kLetters.size();
        }
        ASSERT_NO_FATAL_FAILURE(check(text));
    }
}

}  // namespace

TEST(ObjShortText, AllTextsOfUpToFiveLettersAreReadAsByTheReference) {
    for (std::size_t length = 0; length <= 5; ++length)
        forEachText(length, [](const std::string& text) { ASSERT_TRUE(isReadAsByReference(text)) << text; });
}

TEST(ObjShortText, TextsOfUpToThreeLettersPassThroughAllThreads) {
    for (std::size_t length = 0; length <= 3; ++length) {
        forEachText(length, [](std::string text) {
            const std::string expected = referenceBlanked(text);
            detail::blankContinuations(text);
            ASSERT_EQ(text, expected);
            const ReferenceObjData plain = referenceObjData(text);
            if (plain.isEndless)
                ASSERT_THROW((void)detail::parseObj(text), std::bad_alloc) << text;
            else
                ASSERT_TRUE(sameLists(detail::parseObj(text), plain)) << text;
        });
    }
}

TEST(ObjShortText, FaceLinesOfUpToFourLettersAreReadAsByTheReference) {
    // Enough of a mesh that some of them make a triangle.
    const std::string start = "v 0 0 0\nvt 0 0\nvn 0 0 1\nv 1 0 0\nv 0 1 0\nf 1/1/1 2//1 3/";
    for (std::size_t length = 0; length <= 4; ++length)
        forEachText(length, [&](const std::string& text) {
            ASSERT_TRUE(isReadAsByReference(referenceBlanked(start + text + "\n"))) << text;
        });
}
