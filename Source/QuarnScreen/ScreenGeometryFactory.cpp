#include <QuarnScreen/ScreenGeometryFactory.h>

#include <Common/TextConversion.h>
#include <Common/ZelmoreException.h>
#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/OBJScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

namespace {
constexpr int kUnknownTypeLine = 48;
}

std::shared_ptr<IScreenGeometry> ScreenGeometryFactory::createScreenGeometry(const std::string& typeName) {
    if (typeName == OBJScreen::type()) return std::make_shared<OBJScreen>(L"Y", L"Z", 1.0F);
    if (typeName == FlatScreen::type()) return std::make_shared<FlatScreen>();
    if (typeName == CylinderScreen::type()) return std::make_shared<CylinderScreen>();
    if (typeName == RuledSurfaceScreen::type()) return std::make_shared<RuledSurfaceScreen>();
    if (typeName == SphericalScreen::type()) return std::make_shared<SphericalScreen>();
    throw ZelmoreExceptionRuntime("Source/QuarnScreen/ScreenGeometryFactory", kUnknownTypeLine,
                                  L"Screen type [ " + fromUtf8(typeName) + L" ] not implemented");
}
