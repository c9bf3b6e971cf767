#include <gtest/gtest.h>

#include <sstream>

#include "Library/Obj/SampleTexts.h"
#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/Mesh/Meshes.h"

// One screen after another load, compared with the expected steps.

using namespace quarn::test;
using namespace std::string_literals;

namespace {

// A sheet whose corners have few digits, so that its text is short.
const std::string& generatedSheet() {
    static const std::string text = objTextOf(flatGrid({8, 4}));
    return text;
}

// The same with its lines from last to first: each face before its vertices, and the normal at the
// end.
const std::string& sheetFromBehind() {
    static const std::string text = [] {
        std::istringstream lines(generatedSheet());
        std::string result;
        for (std::string line; std::getline(lines, line);) result.insert(0, line + "\n");
        return result;
    }();
    return text;
}

// Some end at a line's end, some within a face line, most anywhere.
std::string randomPrefix(const std::string& text, Rng& rng) {
    const auto size = static_cast<std::size_t>(rng.integer(0, static_cast<int>(text.size())));
    if (rng.coin()) return text.substr(0, size);
    const std::size_t end = text.find('\n', size);
    return end == std::string::npos ? text : text.substr(0, end + 1);
}

// Turns some bytes into others that matter to the scans.
std::string spoiled(std::string text, Rng& rng) {
    const std::string bytes = "vtnf/-10 \n\\#.\r9e\0"s;
    for (int i = rng.integer(1, 4); i > 0; --i)
        text[static_cast<std::size_t>(rng.integer(0, static_cast<int>(text.size()) - 1))] =
            bytes[static_cast<std::size_t>(rng.integer(0, static_cast<int>(bytes.size()) - 1))];
    return text;
}

std::string anyText(Rng& rng) {
    switch (rng.integer(0, 7)) {
        case 0:
            return "";
        case 1:
            return kSquare;
        case 2:
            return squareAt(static_cast<char>('0' + rng.integer(0, 9)));
        case 3:
            return sampleTexts()[static_cast<std::size_t>(rng.integer(0, 2))];
        case 4:
            return randomPrefix(generatedSheet(), rng);
        case 5:
            return spoiled(generatedSheet(), rng);
        default:
            return spoiled(kSquare + squareAt('4'), rng);
    }
}

struct Axes {
    const wchar_t* forward;
    const wchar_t* upward;
    float scale;
};
constexpr Axes kAxes[] = {{L"Y", L"Z", 1.0F},   {L"-X", L"Z", 2.5F}, {L"Z", L"-Y", 0.01F},
                          {L"-Y", L"-Z", 1.0F}, {L"X", L"X", 1.0F},  {L"", L"Z", 3.0F}};

}  // namespace

TEST(ObjScreenHistory, ThousandPrefixesOfASheetEndAsSpecified) {
    OpenObjScreen screen;
    ReferenceObjScreen plain;
    int loaded = 0;
    int outOfMemory = 0;
    int refused = 0;
    for (int i = 0; i < seedCount(1000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const std::string text = randomPrefix(i % 4 == 0 ? sheetFromBehind() : generatedSheet(), rng);
        const LoadEnd end = loadInto(screen, text);
        ASSERT_EQ(end, plain.load(text)) << text;
        ASSERT_TRUE(isLike(screen, plain)) << text;
        loaded += static_cast<int>(end == kLoaded);
        outOfMemory += static_cast<int>(end.isOutOfMemory);
        refused += static_cast<int>(end.kind != 0);
    }
    EXPECT_GT(loaded, seedCount(300));
    EXPECT_GT(outOfMemory, seedCount(100));
    EXPECT_GT(refused, seedCount(100));
}

TEST(ObjScreenHistory, AnyTextsOneAfterAnotherLeaveWhatIsSpecified) {
    for (int i = 0; i < seedCount(150); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const Axes& axes = kAxes[static_cast<std::size_t>(i) % std::size(kAxes)];
        OpenObjScreen screen(axes.forward, axes.upward, axes.scale);
        ReferenceObjScreen plain;
        plain.transform = OBJScreen::getTransformMatrix(axes.forward, axes.upward, axes.scale);
        for (int load = 0; load < 6; ++load) {
            const std::string text = anyText(rng);
            ASSERT_EQ(loadInto(screen, text), plain.load(text)) << text;
            ASSERT_TRUE(isLike(screen, plain)) << text;
        }
    }
}
