#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <span>
#include <string_view>

#include <QuarnKit/Base/Error.h>
#include "Kit/Formats/ObjRepairCases.h"
#include "Reference/Formats/ReferenceAnyObjReader.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

std::string pick(Rng& rng, const std::vector<std::string>& choices) {
    return choices[static_cast<std::size_t>(rng.integer(0, static_cast<int>(choices.size()) - 1))];
}

std::string joined(std::initializer_list<std::string_view> texts) {
    std::string all;
    for (const std::string_view text : texts) all += text;
    return all;
}

// A text as some program or other writes it. Each text has a few habits of its own, and all of them
// at times.
class TextMaker {
public:
    explicit TextMaker(Rng& random) : rng(random) {
        ends = {pick(rng, {"\n", "\r\n", "\r", "\r\r\n"})};
        blanks = {pick(rng, {" ", " ", "  ", "\t"})};
        if (rng.integer(0, 3) == 0) ends = {"\n", "\r\n", "\r", "\n\n"};
        if (rng.integer(0, 3) == 0) blanks = {" ", "\t", "  ", " \\\n ", "\\\r\n", "\v"};
        isRelative = rng.coin();
        forms = rng.integer(0, 3);
        hasComments = rng.coin();
        isDataFirst = rng.coin();
    }

    std::string make() {
        if (rng.integer(0, 4) == 0) text += "\xEF\xBB\xBF";
        for (int i = 0; i < 3; ++i) addVertex();
        const int lines = rng.integer(1, 40);
        for (int i = 0; i < lines; ++i) addLine(isDataFirst ? i * 6 / lines : rng.integer(0, 5));
        addFace();
        if (rng.coin()) text.erase(text.find_last_not_of("\r\n") + 1);
        return text;
    }

private:
    void addLine(int kind) {
        if (kind == 0 || kind == 3) addVertex();
        if (kind == 1) addUV();
        if (kind == 2) addNormal();
        if (kind == 4)
            addWords(pick(rng, {"g", "o", "usemtl", "s", "# a", "#", "", "l 1 2", "vp 0 1", "mtllib C:\\x"}));
        if (kind == 5) addFace();
    }

    std::string number() {
        static const std::vector<const char*> formats = {"%.6f",  "%g",   "%.8e", "%.17g",
                                                         "%+.3f", "%.0f", "%.9G"};
        char buffer[64];
        const double value = rng.uniform(-1.0, 1.0) * std::pow(10.0, rng.integer(-8, 8));
        std::snprintf(buffer, sizeof buffer, formats[static_cast<std::size_t>(rng.integer(0, 6))], value);
        // Where numbers are written with a comma, as in one run of these tests, it is not a point.
        for (char& byte : buffer)
            if (byte == ',') byte = '.';
        return buffer;
    }

    void addVertex() {
        ++vertices;
        addNumbers("v", rng.integer(0, 4) == 0 ? 6 : 3);
    }
    void addUV() {
        ++uvs;
        addNumbers("vt", rng.integer(2, 3));
    }
    void addNormal() {
        ++normals;
        addNumbers("vn", 3);
    }

    void addNumbers(const std::string& keyword, int count) {
        std::vector<std::string> words(static_cast<std::size_t>(count));
        for (std::string& word : words) word = number();
        addWords(keyword, words);
    }

    std::string reference(int count) {
        const int number = rng.integer(1, count);
        return std::to_string(isRelative && rng.integer(0, 5) > 0 ? number - count - 1 : number);
    }

    void addFace() {
        std::vector<std::string> words;
        const int count = rng.integer(0, 9) == 0 ? rng.integer(0, 2) : rng.integer(3, 6);
        for (int i = 0; i < count; ++i) {
            std::string corner = reference(vertices);
            const bool hasUV = uvs > 0 && forms % 2 == 0;
            const bool hasNormal = normals > 0 && forms < 2;
            if (hasUV || hasNormal) corner += "/";
            if (hasUV) corner += reference(uvs);
            if (hasNormal) corner += "/" + reference(normals);
            words.push_back(corner);
        }
        addWords("f", words);
    }

    void addWords(const std::string& keyword, const std::vector<std::string>& words = {}) {
        if (rng.integer(0, 9) == 0) text += pick(rng, {" ", "\t", "   "});
        text += keyword;
        for (const std::string& word : words) text += pick(rng, blanks) + word;
        if (rng.integer(0, 2) == 0) text += pick(rng, {" ", "  ", "\t"});
        if (hasComments && rng.integer(0, 3) == 0) text += pick(rng, {" # f 1 2 3", "#v", "\t# x"});
        text += pick(rng, ends);
    }

    Rng& rng;
    std::string text;
    std::vector<std::string> ends;
    std::vector<std::string> blanks;
    bool isRelative = false;
    int forms = 0;
    bool hasComments = false;
    bool isDataFirst = false;
    int vertices = 0;
    int uvs = 0;
    int normals = 0;
};

std::vector<Triangle> load(const std::string& text) {
    OBJScreen screen;
    return loadTriangles(screen, text);
}

bool isSameCorner(const TriangleVertex& corner, const ReferenceAnyObjCorner& expected) {
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (corner.position[axis] != static_cast<double>(expected.position.at(axis))) return false;
    return corner.uv == (expected.uv ? Point<double, 2>(expected.uv->at(0), expected.uv->at(1)) : kNoUV);
}

// Expects that the corners of a triangle are some of those of its face, whose fan is \p fan.
void expectCornersOf(const Triangle& triangle, std::span<const ReferenceAnyObjTriangle> fan) {
    for (const TriangleVertex& corner : triangle.vertices)
        EXPECT_TRUE(std::any_of(fan.begin(), fan.end(), [&](const ReferenceAnyObjTriangle& expected) {
            return std::any_of(expected.corners.begin(), expected.corners.end(),
                               [&](const auto& other) { return isSameCorner(corner, other); });
        }));
}

// Expects the triangles of a reader that builds a fan of each face; concave faces only have to keep
// their corners.
void expectSameTriangles(const RepairedObj& repaired, const std::vector<ReferenceAnyObjTriangle>& expected) {
    const std::vector<Triangle> triangles = load(repaired.text);
    ASSERT_EQ(triangles.size(), expected.size());
    std::size_t i = 0;
    while (i < triangles.size()) {
        std::size_t end = i + 1;
        while (end < triangles.size() && expected[end].line == expected[i].line) ++end;
        const bool isConcave =
            std::binary_search(repaired.concaveFaces.begin(), repaired.concaveFaces.end(), i);
        const std::span fan(&expected[i], end - i);
        for (; i < end; ++i)
            if (isConcave)
                expectCornersOf(triangles[i], fan);
            else
                for (std::size_t k = 0; k < 3; ++k)
                    ASSERT_TRUE(isSameCorner(triangles[i].vertices.at(k), expected[i].corners.at(k))) << i;
    }
}

TEST(ObjRepairerRandom, TheLibraryLoadsWhatTheReferenceReaderReads) {
    for (int i = 0; i < seedCount(3000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const std::string text = TextMaker(rng).make();
        const auto expected = referenceAnyObjTriangles(text);
        if (expected.empty()) {
            EXPECT_THROW(static_cast<void>(repairObj("a.obj", text)), Error);
            continue;
        }
        SCOPED_TRACE(text);
        const RepairedObj repaired = repairObj("a.obj", text);
        expectSameTriangles(repaired, expected);
        ASSERT_EQ(repaired.triangleLines.size(), expected.size());
        for (std::size_t k = 0; k < expected.size(); ++k)
            ASSERT_EQ(repaired.triangleLines[k], expected[k].line);
        if (HasFailure()) return;
    }
}

TEST(ObjRepairerRandom, RepairedTextNeedsNoRepair) {
    for (int i = 0; i < 5000; ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const std::string text = TextMaker(rng).make();
        if (referenceAnyObjTriangles(text).empty()) continue;
        const std::string once = repairObj("a.obj", text).text;
        const RepairedObj twice = repairObj("a.obj", once);
        ASSERT_EQ(twice.text, once);
        ASSERT_FALSE(twice.repairs.any());
    }
}

// Repairs any text. The result must load, and a second repair must not change it.
void expectRepairedOrRefused(const std::string& text) {
    std::string once;
    try {
        once = repairObj("a.obj", text).text;
    } catch (const Error&) {
        return;
    }
    ASSERT_NO_THROW(ASSERT_FALSE(load(once).empty())) << testing::PrintToString(text);
    ASSERT_EQ(repairObj("a.obj", once).text, once) << testing::PrintToString(text);
}

const std::string kLetters = std::string("vtnf/-+10 \n\r\t\\#.e\0", 18);
const std::string kHead = "v 0 0 0\nv 1 0 0\nv 1 1 0\nvt 0 1\n";

std::string wordOf(int number, int length) {
    std::string word;
    for (; length > 0; --length, number /= static_cast<int>(kLetters.size()))
        word += kLetters[static_cast<std::size_t>(number) % kLetters.size()];
    return word;
}

TEST(ObjRepairerRandom, ShortTextsAreRepairedOrRefused) {
    int count = 1;
    for (int length = 0; length <= 4; ++length, count *= static_cast<int>(kLetters.size()))
        for (int i = 0; i < count; ++i) expectRepairedOrRefused(wordOf(i, length));
}

TEST(ObjRepairerRandom, ShortTextsAroundAFaceAreRepairedOrRefused) {
    int count = 1;
    for (int length = 0; length <= 2; ++length, count *= static_cast<int>(kLetters.size()))
        for (int i = 0; i < count; ++i) {
            const std::string word = wordOf(i, length);
            expectRepairedOrRefused(joined({kHead, word, "f 1 2 3\n"}));
            expectRepairedOrRefused(joined({kHead, "f 1 2 3", word}));
            expectRepairedOrRefused(joined({kHead, "f 1 2", word, "3\nvn 1 0 0", word}));
            expectRepairedOrRefused(
                joined({kHead, "vn 0 0 1\nf 1//1 2/1/1", word, " 3//1\n# x", word, "f 3//1 2//1 1//1\n"}));
            if (HasFatalFailure()) return;
        }
}

TEST(ObjRepairerRandom, RandomTextsAreRepairedOrRefused) {
    for (int i = 0; i < 20000; ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::string text = kHead;
        const int length = rng.integer(1, 30);
        for (int k = 0; k < length; ++k)
            text += pick(rng, {"v ",      "vt",
                               "vn ",     "f ",
                               "f 1 2 3", "/",
                               "-1",      "1",
                               " ",       "\n",
                               "\r",      "\t",
                               "\\",      "\\\n",
                               "#",       "\nf 1//1 2//1 3//1",
                               "\nf",     std::string(1, '\0'),
                               "g",       "\nv 1 2 3",
                               "1e9",     ".5",
                               "fo",      "\nvn 0"});
        expectRepairedOrRefused(text);
        if (HasFatalFailure()) return;
    }
}

}  // namespace
}  // namespace quarn::test
