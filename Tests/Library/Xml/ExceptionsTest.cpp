#include <Common/XmlHelper.h>
#include <Common/ZelmoreException.h>
#include <QuarnScreen/ObjLoadException.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>
#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "Support/Dom.h"

namespace quarn::test {
namespace {

template <class Exception>
void expectFields(const Exception& exception, const std::string& file, int line,
                  const std::wstring& message) {
    EXPECT_EQ(exception.file(), file);
    EXPECT_EQ(exception.line(), line);
    EXPECT_EQ(exception.message(), message);
}

// Runs `work` and checks the exception that it throws: the very class, the line and that there is
// no message.
template <class Work>
void expectParseException(int line, const Work& work) {
    try {
        work();
        FAIL() << "nothing was thrown";
    } catch (const ZelmoreExceptionBase& exception) {
        EXPECT_EQ(typeid(exception), typeid(ZelmoreParseException));
        expectFields(exception, "Framework/CXX/Common/XmlHelper", line, L"");
    }
}

template <class Exception>
class ExceptionFamily : public ::testing::Test {};
using ExceptionsWithThreeFields =
    ::testing::Types<ZelmoreExceptionBase, ZelmoreException, ZelmoreParseException, ZelmoreExceptionRuntime>;
TYPED_TEST_SUITE(ExceptionFamily, ExceptionsWithThreeFields);

TYPED_TEST(ExceptionFamily, KeepsWhatItIsGiven) {
    const std::string file("Source\0File", 11);
    const std::wstring message(L"a\0\u00E4\U0001F5B5", 4);
    expectFields(TypeParam(file, 48, message), file, 48, message);
    expectFields(TypeParam("", -1, L""), "", -1, L"");
}

TYPED_TEST(ExceptionFamily, HoldsItsOwnCopies) {
    std::string file = "file";
    std::wstring message = L"message";
    const TypeParam exception(file, 1, message);
    file[0] = 'x';
    message[0] = L'x';
    expectFields(exception, "file", 1, L"message");
}

TYPED_TEST(ExceptionFamily, ACopyHasAllThreeFields) {
    const TypeParam original("file", 7, L"message");
    const TypeParam copy(original);
    expectFields(copy, "file", 7, L"message");
    expectFields(original, "file", 7, L"message");
    TypeParam assigned("other", 8, L"text");
    assigned = original;
    expectFields(assigned, "file", 7, L"message");
}

TYPED_TEST(ExceptionFamily, IsNoStandardExceptionAndHasAVirtualDestructor) {
    EXPECT_FALSE((std::is_base_of_v<std::exception, TypeParam>));
    EXPECT_TRUE(std::has_virtual_destructor_v<TypeParam>);
    EXPECT_TRUE((std::is_base_of_v<ZelmoreExceptionBase, TypeParam>));
}

TYPED_TEST(ExceptionFamily, CanBeCaughtByItsBase) {
    try {
        throw TypeParam("file", 7, L"message");
    } catch (const std::exception&) {
        FAIL() << "caught as a standard exception";
    } catch (const ZelmoreExceptionBase& exception) {
        EXPECT_EQ(typeid(exception), typeid(TypeParam));
        expectFields(exception, "file", 7, L"message");
    }
}

TEST(ExceptionTree, ParsingAndLoadingFailuresAreZelmoreExceptions) {
    EXPECT_TRUE((std::is_base_of_v<ZelmoreException, ZelmoreParseException>));
    EXPECT_TRUE((std::is_base_of_v<ZelmoreException, ObjLoadException>));
    EXPECT_FALSE((std::is_base_of_v<ZelmoreParseException, ObjLoadException>));
}

TEST(ExceptionTree, ARuntimeFailureIsNoZelmoreException) {
    EXPECT_FALSE((std::is_base_of_v<ZelmoreException, ZelmoreExceptionRuntime>));
    EXPECT_FALSE((std::is_base_of_v<std::exception, ObjLoadException>));
}

TEST(ObjLoadException, HasNeitherFileNorLine) {
    const ObjLoadException exception(3, L"Bad vertex references in the file.");
    expectFields(exception, "", -1, L"Bad vertex references in the file.");
    EXPECT_EQ(exception.status(), 3);
}

TEST(ObjLoadException, ACopyHasTheStatusToo) {
    const ObjLoadException original(2, L"message");
    const ObjLoadException copy(original);
    EXPECT_EQ(copy.status(), 2);
    expectFields(copy, "", -1, L"message");
    ObjLoadException assigned(1, L"");
    assigned = original;
    EXPECT_EQ(assigned.status(), 2);
    expectFields(assigned, "", -1, L"message");
}

TEST(ParseException, ANodeWithoutChildrenRaisesLine223WhereTheMessageIsNull) {
    const DocumentPtr document = newDocument();
    auto* node = appendElement(*document, L"a");
    expectParseException(223, [&] { (void)XmlHelper::readDouble(node, nullptr); });
    expectParseException(223, [&] { (void)XmlHelper::readPoint(node, nullptr); });
    auto* text = document->createTextNode(u"1.5");
    expectParseException(223, [&] { (void)XmlHelper::readDouble(text, nullptr); });
}

TEST(ParseException, AMessageKeepsANodeWithoutChildrenFromRaising) {
    const DocumentPtr document = newDocument();
    auto* node = appendElement(*document, L"a");
    for (const wchar_t* message : {L"", L"message"}) {
        EXPECT_EQ(XmlHelper::readDouble(node, message), 0.0);
        EXPECT_EQ(XmlHelper::readPoint(node, message), (Point<double, 3>()));
    }
}

TEST(ParseException, AnyChildKeepsANullMessageFromRaising) {
    const DocumentPtr document = parseDocument("<r><a>1.5, 2, 3</a><a><!--1--></a><a>abc</a></r>");
    auto* a = document->getDocumentElement()->getFirstChild();
    EXPECT_EQ(XmlHelper::readDouble(a, nullptr), 1.5);
    for (; a != nullptr; a = a->getNextSibling()) {
        EXPECT_NO_THROW((void)XmlHelper::readDouble(a, nullptr));
        EXPECT_NO_THROW((void)XmlHelper::readPoint(a, nullptr));
    }
}

TEST(ParseException, ADefinitionWithoutChildrenRaisesLine378) {
    const DocumentPtr document = newDocument();
    auto* node = appendElement(*document, L"ScreenGeometry");
    expectParseException(
        378, [&] { (void)ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(node); });
}

}  // namespace
}  // namespace quarn::test
