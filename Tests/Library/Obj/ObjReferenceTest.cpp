#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjParser.h>
#include <QuarnScreen/Detail/Obj/ObjText.h>

#include <map>
#include <new>
#include <string>
#include <string_view>

#include "Library/Obj/ObjCases.h"
#include "Support/Rng.h"

using namespace quarn;
using namespace quarn::test;

namespace {

// Writes files as programs do, and with each fault now and then.
class FileWriter {
public:
    explicit FileWriter(int index)
        : rng(index),
          points(rng.integer(rng.integer(0, 9) == 0 ? 0 : 1, 8)),
          faults(rng.integer(0, 2) == 0 ? 10 : 0),
          isUVWide(rng.integer(0, 9) == 0),
          lineEnd(rng.coin() ? "\n" : "\r\n") {}

    std::string file() {
        const int lines = rng.integer(0, 40);
        const bool hasUVs = rng.integer(0, 5) != 0;
        const bool hasNormals = rng.integer(0, 9) != 0;
        for (int i = 0; i < points; ++i) {
            line("v", {number(), number(), number()});
            if (hasUVs) line("vt", {unit(), unit()});
            if (hasNormals) line("vn", {number(), number(), number()});
        }
        for (int i = 0; i < lines; ++i) anyLine();
        if (isFaulty() && !text.empty()) text.pop_back();
        return text;
    }

private:
    bool isFaulty() { return faults > 0 && rng.integer(0, 99) < faults; }

    std::string number() {
        std::string result = std::to_string(rng.uniform(-100.0, 100.0));
        // The locale may write a comma.
        for (char& c : result)
            if (c == ',') c = '.';
        if (rng.integer(0, 3) == 0) result += "e" + std::to_string(rng.integer(-12, 12));
        return isFaulty() ? result.substr(0, static_cast<std::size_t>(rng.integer(0, 3))) : result;
    }
    std::string unit() {
        return isUVWide || isFaulty() ? number() : "0." + std::to_string(rng.integer(0, 999999));
    }

    std::string index() {
        return std::to_string(isFaulty() ? rng.integer(-1, points + 1) : rng.integer(1, points));
    }

    std::string corner() {
        if (points == 0) return "1/1/1";
        if (isFaulty()) return index();
        if (rng.integer(0, 9) == 0) return index() + "//" + index();
        return index() + "/" + index() + "/" + index();
    }

    void line(const std::string& keyword, const std::vector<std::string>& arguments) {
        if (isFaulty()) text += ' ';
        text += keyword;
        for (const std::string& argument : arguments) {
            text += isFaulty() ? "\t"
                               : std::string(static_cast<std::size_t>(rng.integer(0, 9) == 0 ? 3 : 1), ' ');
            if (rng.integer(0, 19) == 0) text += "\\\n";
            text += argument;
        }
        if (rng.integer(0, 3) == 0) text += ' ';
        if (isFaulty()) text += "# done";
        if (isFaulty()) text += '\0';
        text += lineEnd;
    }

    void anyLine() {
        static constexpr std::string_view kOthers[] = {"# a comment", "g left", "usemtl cloth", "s off", "",
                                                       "o name",      "vp 1 2", "l 1 2 3",      "$ 1"};
        switch (rng.integer(0, 7)) {
            case 0:
                line(std::string(kOthers[static_cast<std::size_t>(rng.integer(0, 8))]), {});
                break;
            case 1:
                line("v", {number(), number(), number(), number()});
                break;
            default: {
                std::vector<std::string> corners(
                    static_cast<std::size_t>(rng.integer(isFaulty() ? 0 : 3, 7)));
                for (std::string& each : corners) each = corner();
                line("f", corners);
            }
        }
    }

    Rng rng;
    int points;
    int faults;
    bool isUVWide;
    std::string lineEnd;
    std::string text;
};

Matrix<float, 4> randomTransform(Rng& rng) {
    Matrix<float, 4> transform = Matrix<float, 4>::identity();
    if (rng.coin()) return transform;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j) transform(i, j) = static_cast<float>(rng.uniform(-2.0, 2.0));
    return transform;
}

// How a load of the plain reader ends: its status, or 100 for a face line that does not.
int endOf(const std::string& text) {
    const ReferenceObjData lists = referenceObjData(text);
    return lists.isEndless ? 100 : referenceObjResult(lists, Matrix<float, 4>::identity()).status;
}

}  // namespace

TEST(ObjReference, GeneratedFilesAreReadAsByTheReference) {
    std::map<int, int> ends;
    for (int i = 0; i < 6000; ++i) {
        SCOPED_TRACE(i);
        const std::string text = referenceBlanked(FileWriter(i).file());
        Rng rng(i);
        ASSERT_TRUE(isReadAsByReference(text, randomTransform(rng))) << text;
        ++ends[endOf(text)];
    }
    // All of them occur, so nothing above is left out.
    for (const int end : {0, 1, 2, 3, 7, 100}) EXPECT_GE(ends[end], 20) << end;
}

TEST(ObjReference, FilesOfManyRangesPassThroughAllThreads) {
    for (int i = 0; i < 6; ++i) {
        SCOPED_TRACE(i);
        std::string text;
        for (int part = 0; text.size() < 2500000; ++part) {
            std::string file = FileWriter(i + 6 * part).file();
            // An endless line would hide what follows.
            if (endOf(referenceBlanked(file)) != 100) text += file;
        }
        const std::string expected = referenceBlanked(text);
        detail::blankContinuations(text);
        ASSERT_TRUE(text == expected);
        ASSERT_TRUE(sameLists(detail::parseObj(text), referenceObjData(text)));
    }
}
