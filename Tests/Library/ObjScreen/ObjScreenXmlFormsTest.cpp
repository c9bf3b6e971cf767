#include <gtest/gtest.h>

#include <Common/ZelmoreException.h>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/ScreenXml.h"

// Elements as other hands write them: the older form, odd numbers and orders of children.

using namespace quarn::test;

namespace {

// base64 of "v 1 2 3\nvn 0 0 1\n" and of it with a "#" at the end, which needs no padding.
const std::string kPoint = "diAxIDIgMwp2biAwIDAgMQo=";
const std::string kPointAndSharp = "diAxIDIgMwp2biAwIDAgMQoj";
const std::string kPointText = "v 1 2 3\nvn 0 0 1\n";
// base64 of the same with two more letters: "v 4 5 6\nvn 0 0 1\n"
const std::string kOtherPoint = "diA0IDUgNgp2biAwIDAgMQo=";
const std::string kOtherText = "v 4 5 6\nvn 0 0 1\n";

std::string element(const std::string& name, const std::string& text) {
    return "<" + name + ">" + text + "</" + name + ">";
}

// What a screen of axes X and Z and of scale 2 saves of them after it read an element's children.
struct Read {
    std::wstring forward;
    std::wstring upward;
    std::wstring scale;
    std::string text;
};

std::wstring between(const std::wstring& xml, const std::wstring& tag) {
    const std::size_t start = xml.find(L"<" + tag + L">") + tag.size() + 2;
    return xml.substr(start, xml.find(L"</" + tag, start) - start);
}

Read readAfter(OBJScreen& screen) {
    const std::wstring xml = xmlOf(screen, 0);
    return {between(xml, L"AxisForward"), between(xml, L"AxisUpward"), between(xml, L"Scale"),
            screen.getLoadedFileContents()};
}

Read read(const std::string& children) {
    OBJScreen screen(L"X", L"Z", 2.0F);
    readChildren(screen, children);
    return readAfter(screen);
}

void expectOldForm(const std::string& children, const std::string& text) {
    const Read result = read(children);
    EXPECT_EQ(result.forward, L"X") << children;
    EXPECT_EQ(result.upward, L"Z") << children;
    EXPECT_EQ(result.scale, L"2.000000000000000e+00") << children;
    EXPECT_EQ(result.text, text) << children;
}

void expectNoText(const std::string& children) {
    OpenObjScreen screen;
    ReferenceObjScreen plain;
    EXPECT_EQ(loadInto(screen, kSquare), plain.load(kSquare));
    try {
        readChildren(screen, children);
        ADD_FAILURE() << "nothing was thrown for " << children;
    } catch (const ZelmoreParseException& error) {
        EXPECT_EQ(error.message(), L"");
        EXPECT_EQ(error.file(), "Framework/CXX/Common/XmlHelper");
        EXPECT_EQ(error.line(), 378);
    }
    EXPECT_TRUE(isLike(screen, plain)) << "the load never began";
    EXPECT_TRUE(screen.isOnScreenSection(kRayTo));
}

}  // namespace

TEST(ObjScreenXmlForms, BareTextIsTheOlderForm) {
    expectOldForm(kPoint, kPointText);
    expectOldForm("<!-- old -->" + kPoint, kPointText);
    expectOldForm("<![CDATA[" + kPoint + "]]>", kPointText);
    expectOldForm(kPointAndSharp, kPointText + "#");
}

TEST(ObjScreenXmlForms, BlankBeforeBareTextCutsItOff) {
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, kSquare), kLoaded);
    readChildren(screen, "\n" + kPoint);
    EXPECT_EQ(screen.getLoadedFileContents(), "");
    EXPECT_FALSE(screen.hasTesselation());
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusOk);
    EXPECT_EQ(screen.getUniqueDataHash(), ScreenGeometry::calculateHash(kSquare));
}

TEST(ObjScreenXmlForms, ThreeChildrenAreTheOlderForm) {
    const std::string axes = element("AxisForward", "-Y") + element("AxisUpward", "X");
    // Padding ends the text before that of the axes.
    expectOldForm(element("ScreenString", kPoint) + axes, kPointText);
    // Without it, "-" does; and "XZ" would be one byte more.
    expectOldForm(element("ScreenString", kPointAndSharp) + axes, kPointText + "#");
    expectOldForm(
        element("ScreenString", kPointAndSharp) + element("AxisForward", "X") + element("AxisUpward", "Z"),
        kPointText + "#]");
    expectOldForm(element("Anything", kPoint), kPointText);
}

TEST(ObjScreenXmlForms, FourChildrenAreTheNewForm) {
    const Read result = read(element("ScreenString", kPoint) + element("AxisForward", "-Y") +
                             element("AxisUpward", "X") + element("Scale", "3"));
    EXPECT_EQ(result.forward, L"-Y");
    EXPECT_EQ(result.upward, L"X");
    EXPECT_EQ(result.scale, L"3.000000000000000e+00");
    EXPECT_EQ(result.text, kPointText);
}

TEST(ObjScreenXmlForms, EveryKindOfChildCounts) {
    const std::string string = element("ScreenString", kPoint);
    EXPECT_EQ(read(string + element("AxisForward", "Q") + "<!-- --><?pi?>").forward, L"Q");
    EXPECT_EQ(read("\n" + string + "\n" + element("AxisForward", "Q") + "\n").forward, L"Q");
    EXPECT_EQ(read("\n" + string + element("AxisForward", "Q") + "\n").forward, L"Q");
    // A grandchild does not.
    expectOldForm("<a>" + string + element("AxisForward", "=") + "<b/><b/><b/></a>", kPointText);
}

TEST(ObjScreenXmlForms, AxesAndScaleApplyWhereverTheyStand) {
    for (const bool isFirst : {false, true}) {
        const std::string string =
            element("ScreenString", encodeBase64(reinterpret_cast<const unsigned char*>(kSquare.data()),
                                                 static_cast<unsigned>(kSquare.size())));
        const std::string rest =
            element("Scale", "3") + element("AxisUpward", "Z") + element("AxisForward", "-X");
        OpenObjScreen screen;
        readChildren(screen, isFirst ? string + rest : rest + string);
        OpenObjScreen expected(L"-X", L"Z", 3.0F);
        EXPECT_EQ(loadInto(expected, kSquare), kLoaded);
        EXPECT_TRUE(sameTriangles(screen.mesh(), expected.mesh()));
    }
}

TEST(ObjScreenXmlForms, LaterElementsReplaceEarlierOnes) {
    const Read result =
        read(element("ScreenString", kOtherPoint) + element("Scale", "3") + element("AxisForward", "-Y") +
             element("ScreenString", kPoint) + element("Scale", "4") + element("AxisForward", "Q"));
    EXPECT_EQ(result.text, kPointText);
    EXPECT_EQ(result.scale, L"4.000000000000000e+00");
    EXPECT_EQ(result.forward, L"Q");
    EXPECT_EQ(read(element("ScreenString", kPoint) + element("ScreenString", kOtherPoint) + "<a/><a/>").text,
              kOtherText);
    // One that is cut off at once leaves no text.
    EXPECT_EQ(read(element("ScreenString", kPoint) + element("ScreenString", " ") + "<a/><a/>").text, "");
}

TEST(ObjScreenXmlForms, WithoutTheTextTheMeshIsDropped) {
    OpenObjScreen screen(L"X", L"Z", 2.0F);
    ReferenceObjScreen plain;
    plain.transform = OBJScreen::getTransformMatrix(L"X", L"Z", 2.0F);
    EXPECT_EQ(loadInto(screen, kSquare), plain.load(kSquare));
    readChildren(screen, element("AxisForward", "-Y") + element("Scale", "5") + "<a/><b/>");
    EXPECT_EQ(plain.load(""), kLoaded);
    EXPECT_TRUE(isLike(screen, plain));
    EXPECT_EQ(readAfter(screen).forward, L"-Y");
    EXPECT_EQ(readAfter(screen).upward, L"Z");
    EXPECT_EQ(readAfter(screen).scale, L"5.000000000000000e+00");
}

TEST(ObjScreenXmlForms, ElementWithoutTextIsRefused) {
    expectNoText("");
    expectNoText("<ScreenString/><a/><b/><c/>");
    expectNoText(element("ScreenString", kPoint) + "<ScreenString></ScreenString><b/><c/>");
}

TEST(ObjScreenXmlForms, WhatStoodBeforeARefusedTextIsTaken) {
    OBJScreen screen(L"X", L"Z", 2.0F);
    EXPECT_THROW(readChildren(screen, element("AxisForward", "Q") + "<ScreenString/>" +
                                          element("Scale", "9") + "<a/>"),
                 ZelmoreParseException);
    EXPECT_EQ(readAfter(screen).forward, L"Q");
    EXPECT_EQ(readAfter(screen).scale, L"2.000000000000000e+00");
}

TEST(ObjScreenXmlForms, NamesMustMatchExactly) {
    const Read result =
        read(element("axisForward", "Q") + element("AxisForward2", "Q") + element("x:Scale", "9") +
             element("SCALE", "9") + element("AxisUpwar", "Q") + element("Screenstring", kPoint));
    EXPECT_EQ(result.forward, L"X");
    EXPECT_EQ(result.upward, L"Z");
    EXPECT_EQ(result.scale, L"2.000000000000000e+00");
    EXPECT_EQ(result.text, "");
}

TEST(ObjScreenXmlForms, AxesAreTakenAsTheyStand) {
    const Read result = read(element("AxisForward", " X ") + element("AxisUpward", "") + "<a/><b/>");
    EXPECT_EQ(result.forward, L" X ");
    EXPECT_EQ(result.upward, L"");
    EXPECT_EQ(read(element("AxisForward", "-<!-- minus -->X&#x1F5A5;") + "<a/><b/><c/>").forward,
              L"-X\U0001F5A5");
}

TEST(ObjScreenXmlForms, ScaleIsReadAsTheCLibraryDoes) {
    const std::pair<const char*, const wchar_t*> cases[] = {
        {"2.5", L"2.500000000000000e+00"},
        {" 2.5x", L"2.500000000000000e+00"},
        {"\n\t4 5", L"4.000000000000000e+00"},
        {"", L"0.000000000000000e+00"},
        {"abc", L"0.000000000000000e+00"},
        {".", L"0.000000000000000e+00"},
        {"1,5", L"1.000000000000000e+00"},
        {"-1e-1", L"-1.000000014901161e-01"},
        {"+7", L"7.000000000000000e+00"},
        {"0x10", L"1.600000000000000e+01"},
        {"0x1p-3", L"1.250000000000000e-01"},
        {"1e39", L"inf"},
        {"-1e39", L"-inf"},
        {"1e999", L"inf"},
        {"3.4028236e38", L"inf"},
        {"3.4028235e38", L"3.402823466385289e+38"},
        {"1e-60", L"0.000000000000000e+00"},
        {"-1e-999", L"-0.000000000000000e+00"},
        {"16777217", L"1.677721600000000e+07"},
        {"infinity", L"inf"},
        {"1e", L"1.000000000000000e+00"},
        {"1<!-- -->2", L"1.200000000000000e+01"},
        {"1e-45", L"1.401298464324817e-45"},
        // A little above the middle of two floats: by way of a double it goes to the even one,
        // below.
        {"1.0000000596046447753906250001", L"1.000000000000000e+00"},
    };
    for (const auto& [text, scale] : cases)
        EXPECT_EQ(read(element("Scale", text) + "<a/><b/><c/>").scale, scale) << text;
    const std::wstring nan = read(element("Scale", "nan") + "<a/><b/><c/>").scale;
    EXPECT_NE(nan.find(L"nan"), std::wstring::npos);
}

TEST(ObjScreenXmlForms, ClassTypeOfTheElementIsNotLookedAt) {
    OBJScreen screen;
    readXml(screen, "<x ClassType=\"class FlatScreen\">" + kPoint + "</x>");
    EXPECT_EQ(screen.getLoadedFileContents(), kPointText);
}

TEST(ObjScreenXmlForms, FailingTextGoesOutAsFromAStream) {
    OBJScreen screen;
    // base64 of "v 0 0 0\n"
    EXPECT_EQ(endOf([&] { readChildren(screen, "diAwIDAgMAo="); }), kNoNormals);
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusBadNormals);
    EXPECT_EQ(screen.getLoadedFileContents(), "v 0 0 0\n");
}
