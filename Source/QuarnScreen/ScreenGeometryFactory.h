/// \file
/// Screens by type name.
#pragma once

#include <memory>
#include <string>

#include <Common/Export.h>
#include <QuarnScreen/IScreenGeometry.h>

/// Creates screens from the type names of saved elements.
///
/// The type name of an element is its attribute ScreenGeometryXmlHelper::classTypeNodeName(). The
/// class has no state.
///
/// Thread-safety: safe on any number of threads.
///
/// \code{.cpp}
/// const auto screen = ScreenGeometryFactory::createScreenGeometry("class SphericalScreen");
/// assert(screen->getType() == SphericalScreen::type());
/// assert(!screen->isValid());
/// \endcode
class QUARNSCREEN_EXPORT ScreenGeometryFactory {
public:
    /// Creates a screen without parameters, to be filled by IXmlSerializable::deserialize().
    /// \param typeName result of ITypeid::getType(), such as "class FlatScreen"
    /// \return the screen, owned by the caller
    /// \throws ZelmoreExceptionRuntime for an unknown type, which includes "class STLScreen"
    static std::shared_ptr<IScreenGeometry> createScreenGeometry(const std::string& typeName);
};
