#include <Common/TextConversion.h>
#include <Common/XmlHelper.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "Support/Bits.h"
#include "Support/Dom.h"
#include "Support/Rng.h"
#include "Support/ScientificText.h"

namespace quarn::test {
namespace {

constexpr double kGreatest = std::numeric_limits<double>::max();

double numberIn(const std::wstring& text) {
    const DocumentPtr document = newDocument();
    return XmlHelper::readDouble(appendElement(*document, L"a", text), L"message");
}

Point<double, 3> pointIn(const std::wstring& text) {
    const DocumentPtr document = newDocument();
    return XmlHelper::readPoint(appendElement(*document, L"a", text), L"message");
}

double numberInXml(const std::string& xml) {
    const DocumentPtr document = parseDocument(xml);
    return XmlHelper::readDouble(document->getDocumentElement(), L"message");
}

struct NumberCase {
    const wchar_t* text;
    double number;
};

TEST(ReadDouble, ReadsTheNumberAtTheStartOfTheText) {
    constexpr NumberCase kCases[] = {
        {L"1.5", 1.5},       {L"+1.5", 1.5},      {L"-1.5", -1.5},
        {L".5", 0.5},        {L"5.", 5.0},        {L"007", 7.0},
        {L"1e3", 1000.0},    {L"1E+3", 1000.0},   {L"25e-1", 2.5},
        {L"-0", -0.0},       {L"1.5abc", 1.5},    {L"1.5 2.5", 1.5},
        {L"1,5", 1.0},       {L"1.5.5", 1.5},     {L"0x10", 0.0},
        {L"1-2", 1.0},       {L"1.234,5", 1.234}, {L"1'234", 1.0},
        {L"5e-324", 5e-324}, {L"1e-400", 0.0},    {L"1.500000000000000e+00", 1.5}};
    for (const NumberCase& one : kCases) EXPECT_TRUE(sameBits(numberIn(one.text), one.number)) << one.text;
}

TEST(ReadDouble, LeadingBlanksAreSkipped) {
    EXPECT_EQ(numberIn(L" \t\r\n\v\f1.5"), 1.5);
    EXPECT_EQ(numberIn(L"\u00A01.5"), 0.0) << "a no-break space is no blank of the classic locale";
    EXPECT_EQ(numberIn(L"\u30001.5"), 0.0) << "neither is an ideographic space";
}

TEST(ReadDouble, TextWithoutANumberIsZero) {
    for (const wchar_t* text : {L"", L" ", L"abc", L"nan", L"NaN", L"inf", L"-inf", L"infinity", L"--1",
                                L"+-1", L"- 1", L"e5", L".", L"-", L",5", L"\u0661", L"\uFF11", L"\u22121"})
        EXPECT_TRUE(sameBits(numberIn(text), 0.0)) << toUtf8(text);
}

// A stream gathers what may belong to a number before it looks at it.
TEST(ReadDouble, AnExponentWithoutDigitsSpoilsTheNumber) {
    for (const wchar_t* text : {L"1e", L"1.5e+", L"1.5e-x", L"2each"}) EXPECT_EQ(numberIn(text), 0.0);
}

TEST(ReadDouble, ANumberThatIsTooLargeIsTheGreatestOne) {
    EXPECT_EQ(numberIn(L"1e999"), kGreatest);
    EXPECT_EQ(numberIn(L"-1e999"), -kGreatest);
    EXPECT_EQ(numberIn(std::wstring(400, L'9')), kGreatest);
}

TEST(ReadDouble, ReadsManyDigitsToTheNearestNumber) {
    EXPECT_EQ(numberIn(L"0.1000000000000000055511151231257827021181583404541015625"), 0.1);
    EXPECT_EQ(numberIn(L"1." + std::wstring(100000, L'0') + L"1"), 1.0);
    EXPECT_EQ(numberIn(std::wstring(100000, L'0') + L"2.5"), 2.5);
}

TEST(ReadDouble, RandomNumberTextGivesTheNearestNumber) {
    for (int i = 0; i < seedCount(20000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const std::wstring text = scientific16(rng.spread(-1060, 1022));
        ASSERT_TRUE(sameBits(numberIn(text), nearestNumber(text)));
    }
}

TEST(ReadDouble, JoinsTextThatIsSplit) {
    EXPECT_EQ(numberInXml("<a>1<!-- 9 -->.<![CDATA[2]]><?pi 9?>5</a>"), 1.25);
    EXPECT_EQ(numberInXml("<a>1<b>.</b><c><d>2</d>5</c></a>"), 1.25);
    EXPECT_EQ(numberInXml("<!DOCTYPE a [<!ENTITY e \"2<b>5</b>\">]><a>1.&e;</a>"), 1.25);
    EXPECT_EQ(numberInXml("<a>&#49;&#x2E;5</a>"), 1.5);
}

TEST(ReadDouble, AnElementWithoutTextIsZero) {
    EXPECT_EQ(numberInXml("<a/>"), 0.0);
    EXPECT_EQ(numberInXml("<a><b/></a>"), 0.0);
    EXPECT_EQ(numberInXml("<a><!--5--></a>"), 0.0);
}

TEST(ReadPoint, ReadsItsOwnForm) {
    EXPECT_EQ(pointIn(L"1.0, 2.0, 3.0"), (Point<double, 3>(1.0, 2.0, 3.0)));
    EXPECT_EQ(pointIn(L"0.000000000000000e+00, -1.000000000000000e+00, 2.500000000000000e-01"),
              (Point<double, 3>(0.0, -1.0, 0.25)));
}

TEST(ReadPoint, TheWordBetweenTwoNumbersMayBeANumber) {
    EXPECT_EQ(pointIn(L"1.0 2.0 3.0"), (Point<double, 3>(1.0, 3.0, 0.0)));
    EXPECT_EQ(pointIn(L"1 x 2 y 3 z"), (Point<double, 3>(1.0, 2.0, 3.0)));
}

TEST(ReadPoint, AWordEndsAtABlankAlone) {
    EXPECT_EQ(pointIn(L"1.0,2.0,3.0"), (Point<double, 3>(1.0, 0.0, 0.0)));
    EXPECT_EQ(pointIn(L"1.0 ,\n2.0 ,\t3.0"), (Point<double, 3>(1.0, 2.0, 3.0)));
    EXPECT_EQ(pointIn(L"1.0 ,2.0, 3.0"), (Point<double, 3>(1.0, 3.0, 0.0)));
    EXPECT_EQ(pointIn(L"1,5, 2,5, 3,5"), (Point<double, 3>(1.0, 2.0, 3.0)));
}

TEST(ReadPoint, NothingIsReadBehindTextThatIsNoNumber) {
    EXPECT_EQ(pointIn(L""), (Point<double, 3>()));
    EXPECT_EQ(pointIn(L"abc, 2.0, 3.0"), (Point<double, 3>()));
    EXPECT_EQ(pointIn(L"1.0, nan, 3.0"), (Point<double, 3>(1.0, 0.0, 0.0)));
    EXPECT_EQ(pointIn(L"1.0, 2.0"), (Point<double, 3>(1.0, 2.0, 0.0)));
    EXPECT_EQ(pointIn(L"1.0, 1e999, 3.0"), (Point<double, 3>(1.0, kGreatest, 0.0)));
}

TEST(ReadPoint, JoinsTextThatIsSplit) {
    const DocumentPtr document = parseDocument("<a>1<!--,-->, <![CDATA[2]]>, <b>3</b></a>");
    EXPECT_EQ(XmlHelper::readPoint(document->getDocumentElement(), L""), (Point<double, 3>(1.0, 2.0, 3.0)));
}

}  // namespace
}  // namespace quarn::test
