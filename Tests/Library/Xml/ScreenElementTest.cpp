#include <Common/TextConversion.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "Reference/Formats/ReferenceBase64.h"
#include "Reference/Formats/ReferenceUtf8.h"
#include "Support/Dom.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

using Helper = ScreenGeometryXmlHelper;

template <class Write>
std::wstring written(const Write& write) {
    std::wostringstream out;
    write(out);
    return out.str();
}

std::wstring openTag(int indent, const std::string& type, bool hasChildren) {
    return written([&](std::wostream& out) { Helper::serializeOpenTag(out, indent, type, hasChildren); });
}

std::wstring closeTag(int indent, bool hasChildren) {
    return written([&](std::wostream& out) { Helper::serializeCloseTag(out, indent, hasChildren); });
}

std::wstring elementOf(int indent, const std::string& definition) {
    return written([&](std::wostream& out) {
        Helper::serializeAndBase64EncodeScreenGeometry(out, indent, "class STLScreen", definition);
    });
}

// The definition as it comes back from the element's XML text.
std::string roundTrip(const std::string& definition) {
    const DocumentPtr document = parseDocument(toUtf8(elementOf(0, definition)));
    return Helper::extractAndBase64DecodeDefinitionString(document->getDocumentElement());
}

std::string definitionIn(const std::string& xml) {
    const DocumentPtr document = parseDocument(xml);
    return Helper::extractAndBase64DecodeDefinitionString(document->getDocumentElement());
}

TEST(ScreenElement, HasItsNames) {
    EXPECT_EQ(Helper::rootNodeName(), L"ScreenGeometry");
    EXPECT_EQ(Helper::classTypeNodeName(), L"ClassType");
    EXPECT_EQ(&Helper::rootNodeName(), &Helper::rootNodeName());
}

TEST(ScreenElement, TheParseMessageEndsWithTheTag) {
    EXPECT_EQ(Helper::makeParseExceptionMsg(L"Screen_Width"),
              L"Error extracting value from tag Screen_Width");
    EXPECT_EQ(Helper::makeParseExceptionMsg(L""), L"Error extracting value from tag ");
    EXPECT_EQ(Helper::makeParseExceptionMsg(L"%s%n\u00E4"), L"Error extracting value from tag %s%n\u00E4");
    const std::wstring longTag(5000, L'x');
    EXPECT_EQ(Helper::makeParseExceptionMsg(longTag), L"Error extracting value from tag " + longTag);
}

TEST(ScreenElement, TheOpenTagIsIndentedByFourBlanksALevel) {
    const std::wstring tag = L"<ScreenGeometry ClassType=\"class FlatScreen\">";
    EXPECT_EQ(openTag(0, "class FlatScreen", true), tag + L"\n");
    EXPECT_EQ(openTag(2, "class FlatScreen", true), L"        " + tag + L"\n");
    EXPECT_EQ(openTag(-1, "class FlatScreen", true), tag + L"\n");
}

TEST(ScreenElement, WithoutChildrenTheLineOfTheOpenTagStaysOpen) {
    EXPECT_EQ(openTag(0, "t", false), L"<ScreenGeometry ClassType=\"t\">");
    EXPECT_EQ(openTag(2, "t", false), L"        <ScreenGeometry ClassType=\"t\">");
}

TEST(ScreenElement, TheTypeIsReadAsUtf8AndNotEscaped) {
    EXPECT_EQ(openTag(0, "\xC3\xA4\"<&>'\xFF", false), L"<ScreenGeometry ClassType=\"\u00E4\"<&>'\uFFFD\">");
    EXPECT_EQ(openTag(1, "a\nb", false), L"    <ScreenGeometry ClassType=\"a\n    b\">");
    EXPECT_EQ(openTag(0, "", true), L"<ScreenGeometry ClassType=\"\">\n");
}

TEST(ScreenElement, TheCloseTagIsIndentedOnlyBehindChildren) {
    EXPECT_EQ(closeTag(0, true), L"</ScreenGeometry>\n");
    EXPECT_EQ(closeTag(2, true), L"        </ScreenGeometry>\n");
    EXPECT_EQ(closeTag(-2, true), L"</ScreenGeometry>\n");
    for (const int indent : {-2, 0, 2}) EXPECT_EQ(closeTag(indent, false), L"</ScreenGeometry>\n");
}

TEST(ScreenElement, TheFourShortFormsNameTheirFlag) {
    for (const int indent : {0, 2}) {
        EXPECT_EQ(written([&](auto& out) { Helper::serializeOpenTagHasChildren(out, indent, "t"); }),
                  openTag(indent, "t", true));
        EXPECT_EQ(written([&](auto& out) { Helper::serializeOpenTagNoChildren(out, indent, "t"); }),
                  openTag(indent, "t", false));
        EXPECT_EQ(written([&](auto& out) { Helper::serializeCloseTagHasChildren(out, indent); }),
                  closeTag(indent, true));
        EXPECT_EQ(written([&](auto& out) { Helper::serializeCloseTagNoChildren(out, indent); }),
                  closeTag(indent, false));
    }
}

TEST(ScreenElement, WithoutChildrenItIsOneLine) {
    EXPECT_EQ(elementOf(1, "solid "),
              L"    <ScreenGeometry ClassType=\"class STLScreen\">c29saWQg</ScreenGeometry>\n");
    EXPECT_EQ(elementOf(0, "f"), L"<ScreenGeometry ClassType=\"class STLScreen\">Zg==</ScreenGeometry>\n");
}

TEST(ScreenElement, TheTextIsTheBase64OfTheBytesThemselves) {
    const std::string bytes("\xFF\0\xC3", 3);
    EXPECT_EQ(elementOf(0, bytes), L"<ScreenGeometry ClassType=\"class STLScreen\">/wDD</ScreenGeometry>\n");
}

TEST(ScreenElement, AnEmptyDefinitionGivesAnElementWithoutChildren) {
    EXPECT_EQ(elementOf(0, ""), L"<ScreenGeometry ClassType=\"class STLScreen\"></ScreenGeometry>\n");
    const DocumentPtr document = parseDocument(toUtf8(elementOf(0, "")));
    EXPECT_FALSE(document->getDocumentElement()->hasChildNodes());
}

TEST(ScreenElement, AUtf8DefinitionComesBack) {
    EXPECT_EQ(roundTrip("solid \xC3\xA4\xF0\x9F\x96\xB5\n"), "solid \xC3\xA4\xF0\x9F\x96\xB5\n");
    EXPECT_EQ(roundTrip(std::string("a\0b", 3)), std::string("a\0b", 3));
    const std::string megabytes(3 * 1024 * 1024 + 2, 'x');
    EXPECT_TRUE(roundTrip(megabytes) == megabytes);
}

TEST(ScreenElement, BytesThatAreNotUtf8ComeBackAsReplacementCharacters) {
    EXPECT_EQ(roundTrip("a\xFF\xE2\x82z"), "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDz");
}

TEST(ScreenElement, RandomDefinitionsComeBackThroughAWideString) {
    for (int i = 0; i < seedCount(1000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        std::string definition;
        for (int left = rng.integer(1, 60); left > 0; --left)
            definition += static_cast<char>(rng.coin() ? rng.bits() % 128 : rng.bits());
        std::string expected;
        for (const wchar_t character : referenceFromUtf8(definition))
            expected += referenceToUtf8(static_cast<char32_t>(character));
        ASSERT_EQ(roundTrip(definition), expected);
    }
}

TEST(ScreenElement, TheDefinitionMayBeSplitByCommentsAndSections) {
    EXPECT_EQ(definitionIn("<a>Zm<!-- x -->9v<![CDATA[Ym]]>F<?p q?>y</a>"), "foobar");
    EXPECT_EQ(definitionIn("<!DOCTYPE a [<!ENTITY e \"YmFy\">]><a>Zm9v&e;</a>"), "foobar");
}

TEST(ScreenElement, ACharacterAfterTheDefinitionMayBeSplitBetweenTwoTextNodes) {
    const DocumentPtr document = parseDocument("<d>YmFy.&#x1F600;</d>");
    xercesc::DOMNode* element = document->getDocumentElement();
    EXPECT_EQ(Helper::extractAndBase64DecodeDefinitionString(element), "bar");
    static_cast<xercesc::DOMText*>(element->getFirstChild())->splitText(6);
    EXPECT_EQ(Helper::extractAndBase64DecodeDefinitionString(element), "bar");
}

TEST(ScreenElement, ABlankOrLineBreakCutsTheDefinitionOff) {
    EXPECT_EQ(definitionIn("<a>Zm9v\nYmFy</a>"), "foo");
    EXPECT_EQ(definitionIn("<a>\nZm9v</a>"), "");
    EXPECT_EQ(definitionIn("<a>Zm9v&#xE4;YmFy</a>"), "foo");
}

TEST(ScreenElement, AnyChildIsEnoughForADefinition) {
    EXPECT_EQ(definitionIn("<a><!-- none --></a>"), "");
    EXPECT_EQ(definitionIn("<a><b/></a>"), "");
    EXPECT_EQ(definitionIn("<a> </a>"), "");
}

}  // namespace
}  // namespace quarn::test
