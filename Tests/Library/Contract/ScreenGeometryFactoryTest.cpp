#include <gtest/gtest.h>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/OBJScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/ScreenGeometryFactory.h>
#include <QuarnScreen/SphericalScreen.h>

#include <atomic>
#include <thread>
#include <vector>

#include <Common/ZelmoreException.h>

#include "Support/LogCapture.h"
#include "Support/ScreenXml.h"

using namespace quarn::test;

namespace {

// The whole message of the exception for an unknown name.
std::wstring messageFor(const std::string& name) {
    try {
        (void)ScreenGeometryFactory::createScreenGeometry(name);
    } catch (const ZelmoreExceptionRuntime& exception) {
        EXPECT_EQ(exception.file(), "Source/QuarnScreen/ScreenGeometryFactory");
        EXPECT_EQ(exception.line(), 48);
        return exception.message();
    }
    ADD_FAILURE() << "nothing was thrown for " << name;
    return {};
}

template <class Screen>
void expectEmpty(const std::string& name) {
    const std::shared_ptr<IScreenGeometry> screen = ScreenGeometryFactory::createScreenGeometry(name);
    ASSERT_NE(dynamic_cast<const Screen*>(screen.get()), nullptr) << name;
    EXPECT_EQ(screen.use_count(), 1);
    EXPECT_EQ(screen->getType(), name);
    EXPECT_EQ(Screen::type(), name);
    EXPECT_FALSE(screen->isValid());
    EXPECT_EQ(screen->getUniqueDataHash(), Screen().getUniqueDataHash());
}

}  // namespace

TEST(ScreenGeometryFactory, MakesAnEmptyScreenOfEachType) {
    expectEmpty<OBJScreen>("class OBJScreen");
    expectEmpty<FlatScreen>("class FlatScreen");
    expectEmpty<CylinderScreen>("class CylinderScreen");
    expectEmpty<RuledSurfaceScreen>("class RuledSurfaceScreen");
    expectEmpty<SphericalScreen>("class SphericalScreen");
}

TEST(ScreenGeometryFactory, ObjScreenHasAxesYAndZAndNoScale) {
    const auto screen = ScreenGeometryFactory::createScreenGeometry("class OBJScreen");
    const std::wstring xml = xmlOf(*screen, 0);
    EXPECT_NE(xml.find(L"<AxisForward>Y</AxisForward>"), std::wstring::npos);
    EXPECT_NE(xml.find(L"<AxisUpward>Z</AxisUpward>"), std::wstring::npos);
    EXPECT_NE(xml.find(L"<Scale>1.000000000000000e+00</Scale>"), std::wstring::npos);
}

TEST(ScreenGeometryFactory, MakesANewScreenForEachCall) {
    const auto first = ScreenGeometryFactory::createScreenGeometry("class FlatScreen");
    const auto second = ScreenGeometryFactory::createScreenGeometry("class FlatScreen");
    EXPECT_NE(first, second);
}

TEST(ScreenGeometryFactory, MadeScreenTakesASavedElement) {
    const auto screen = ScreenGeometryFactory::createScreenGeometry("class RuledSurfaceScreen");
    const DocumentPtr document =
        parseDocument("<ScreenGeometry><Screen_Width>2</Screen_Width></ScreenGeometry>");
    screen->deserialize(document->getDocumentElement());
    EXPECT_TRUE(screen->isValid());
}

TEST(ScreenGeometryFactory, NameWithoutThePrefixIsUnknown) {
    EXPECT_EQ(messageFor("FlatScreen"), L"Screen type [ FlatScreen ] not implemented");
    EXPECT_EQ(messageFor("RuledSurfaceScreen"), L"Screen type [ RuledSurfaceScreen ] not implemented");
}

TEST(ScreenGeometryFactory, EmptyNameIsUnknown) {
    EXPECT_EQ(messageFor(""), L"Screen type [  ] not implemented");
}

TEST(ScreenGeometryFactory, STLScreenIsUnknown) {
    EXPECT_EQ(messageFor("class STLScreen"), L"Screen type [ class STLScreen ] not implemented");
}

TEST(ScreenGeometryFactory, NamesAreComparedByEveryByte) {
    for (const std::string name :
         {"class FlatScree", "class FlatScreenX", " class FlatScreen", "class FlatScreen ",
          "class  FlatScreen", "Class FlatScreen", "class flatscreen", "class ObjScreen", "OBJScreen",
          "class ScreenGeometry", "class MeshScreen", "class "})
        EXPECT_EQ(messageFor(name),
                  L"Screen type [ " + std::wstring(name.begin(), name.end()) + L" ] not implemented");
}

TEST(ScreenGeometryFactory, BytesOfZeroCountAndStayInTheMessage) {
    using namespace std::string_literals;
    EXPECT_EQ(messageFor("class FlatScreen\0"s), L"Screen type [ class FlatScreen\0 ] not implemented"s);
    EXPECT_EQ(messageFor("\0"s), L"Screen type [ \0 ] not implemented"s);
    EXPECT_EQ(messageFor("a\0b"s), L"Screen type [ a\0b ] not implemented"s);
}

TEST(ScreenGeometryFactory, MessageIsTheNameReadAsUtf8) {
    EXPECT_EQ(messageFor("Gro\xC3\x9F\xF0\x9F\x96\xA5"),
              L"Screen type [ Gro\u00DF\U0001F5A5 ] not implemented");
    // Each byte that is no part of a character becomes one replacement.
    EXPECT_EQ(messageFor("a\xFF\xE2\x82 A"), L"Screen type [ a\uFFFD\uFFFD\uFFFD A ] not implemented");
}

TEST(ScreenGeometryFactory, ExceptionIsNoStandardOne) {
    EXPECT_THROW((void)ScreenGeometryFactory::createScreenGeometry("x"), ZelmoreExceptionBase);
    try {
        (void)ScreenGeometryFactory::createScreenGeometry("x");
    } catch (const ZelmoreException&) {
        ADD_FAILURE() << "it stands beside ZelmoreException";
    } catch (const std::exception&) {
        ADD_FAILURE() << "it is no std::exception";
    } catch (...) {
        SUCCEED();
    }
}

TEST(ScreenGeometryFactory, UnknownNameIsNotLogged) {
    const LogCapture shapes(L"Quarn.QuarnScreen.ScreenGeometry");
    const LogCapture helpers(L"Quarn.QuarnControl.ScreenUtils");
    (void)messageFor("x");
    EXPECT_TRUE(shapes.records().empty());
    EXPECT_TRUE(helpers.records().empty());
}

TEST(ScreenGeometryFactory, ServesManyThreads) {
    const std::vector<std::string> names{"class FlatScreen", "class CylinderScreen",
                                         "class RuledSurfaceScreen", "class SphericalScreen"};
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                for (const std::string& name : names)
                    right += ScreenGeometryFactory::createScreenGeometry(name)->getType() == name;
                try {
                    (void)ScreenGeometryFactory::createScreenGeometry("none");
                } catch (const ZelmoreExceptionRuntime& exception) {
                    right += exception.message() == L"Screen type [ none ] not implemented";
                }
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(right, 8 * 200 * 5);
}
