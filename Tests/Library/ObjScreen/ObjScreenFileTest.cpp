#include <gtest/gtest.h>

#include <clocale>

#include <Common/TextConversion.h>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/TemporaryFolder.h"

using namespace quarn::test;
using namespace std::string_literals;

namespace {

LoadEnd loadFile(OBJScreen& screen, const std::wstring& path) {
    return endOf([&] { screen.deserializeFromFile(path); });
}

// Sets the C locale of the process while it lives.
class LocaleOf {
public:
    explicit LocaleOf(const char* name) : before(std::setlocale(LC_ALL, nullptr)) {
        std::setlocale(LC_ALL, name);
    }
    ~LocaleOf() { std::setlocale(LC_ALL, before.c_str()); }
    LocaleOf(const LocaleOf&) = delete;
    LocaleOf& operator=(const LocaleOf&) = delete;

private:
    std::string before;
};

// A directory, a missing file, none, a file taken for a folder, a lone surrogate, a value past
// Unicode.
void expectNotOpened(OpenObjScreen& screen, ReferenceObjScreen& plain) {
    const TemporaryFolder folder;
    const std::wstring file = fromUtf8(folder.write("a.obj", kSquare));
    for (const std::wstring& path :
         {fromUtf8(folder.path("")), fromUtf8(folder.path("b.obj")), std::wstring(), file + L"/x",
          file + wchar_t(0xD800), file + wchar_t(0x110000)}) {
        EXPECT_EQ(loadFile(screen, path), kNotOpened);
        plain.status = 4;
        EXPECT_TRUE(isLike(screen, plain));
        EXPECT_FALSE(screen.isValid());
        EXPECT_FALSE(screen.hasParameterization());
    }
}

}  // namespace

TEST(ObjScreenFile, IsReadAsItsBytes) {
    const TemporaryFolder folder;
    for (const std::string& text : {kSquare, "v 0 0 0\r\nvn 0 0 1\r\n\x1A\0\xFF"s}) {
        OpenObjScreen screen;
        ReferenceObjScreen plain;
        EXPECT_EQ(loadFile(screen, fromUtf8(folder.write("a.obj", text))), plain.load(text));
        EXPECT_TRUE(isLike(screen, plain));
    }
}

TEST(ObjScreenFile, ThatDoesNotOpenChangesTheStatusOfANewScreenAlone) {
    OpenObjScreen screen;
    ReferenceObjScreen plain;
    expectNotOpened(screen, plain);
}

TEST(ObjScreenFile, ThatDoesNotOpenLeavesALoadedScreenItsMesh) {
    OpenObjScreen screen;
    ReferenceObjScreen plain;
    EXPECT_EQ(loadInto(screen, kSquare), plain.load(kSquare));
    expectNotOpened(screen, plain);
    EXPECT_TRUE(screen.hasValidBoundary());
    EXPECT_EQ(screen.outline().points.size(), 5U);
    EXPECT_TRUE(screen.isOnScreenSection(kRayTo));
}

TEST(ObjScreenFile, MayHaveAnyNameInAnyLocale) {
    const TemporaryFolder folder;
    for (const wchar_t* name :
         {L"Gro\u00DFe Leinwand.obj", L"\U0001F5A5\U0002F81A.obj", L"\u65E5\u672C.obj"}) {
        const std::wstring path = fromUtf8(folder.path("")) + name;
        (void)folder.write(toUtf8(name), kSquare);
        OBJScreen inTheLocaleOfTheTest;
        EXPECT_EQ(loadFile(inTheLocaleOfTheTest, path), kLoaded);
        const LocaleOf plainC("C");
        OBJScreen screen;
        EXPECT_EQ(loadFile(screen, path), kLoaded);
        EXPECT_EQ(screen.getStatus(), OBJScreen::StatusOk);
    }
}

TEST(ObjScreenFile, BadContentsAreRefusedAsThoseOfAStream) {
    const TemporaryFolder folder;
    OpenObjScreen screen;
    ReferenceObjScreen plain;
    for (const std::string& text : {kNormal, kCorners, kSquare + "f 1 2 3\n", kSquare + "f 1", kSquare}) {
        EXPECT_EQ(loadFile(screen, fromUtf8(folder.write("a.obj", text))), plain.load(text)) << text;
        EXPECT_TRUE(isLike(screen, plain));
    }
}

TEST(ObjScreenFile, EmptyOneKeepsTheStatus) {
    const TemporaryFolder folder;
    OpenObjScreen screen;
    ReferenceObjScreen plain;
    EXPECT_EQ(loadFile(screen, L"/no/such/file"), kNotOpened);
    plain.status = 4;
    EXPECT_EQ(loadFile(screen, fromUtf8(folder.write("empty.obj", ""))), kLoaded);
    EXPECT_TRUE(isLike(screen, plain));
}
