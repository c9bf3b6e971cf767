/// \file
/// Everything that a caller of the library needs.
#pragma once

#include <Common/TextConversion.h>
#include <Common/XmlHelper.h>
#include <Common/ZelmoreException.h>
#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/IScreenConfig.h>
#include <QuarnScreen/IScreenGeometry.h>
#include <QuarnScreen/ITypeid.h>
#include <QuarnScreen/IXmlSerializable.h>
#include <QuarnScreen/Intersection.h>
#include <QuarnScreen/IntersectionSet.h>
#include <QuarnScreen/Lines.h>
#include <QuarnScreen/Matrix.h>
#include <QuarnScreen/ObjLoadException.h>
#include <QuarnScreen/Point.h>
#include <QuarnScreen/Ray.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/ScreenGeometry.h>
#include <QuarnScreen/ScreenGeometryFactory.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>
#include <QuarnScreen/ScreenUtils.h>
#include <QuarnScreen/SphericalScreen.h>
#include <QuarnScreen/Triangle.h>
