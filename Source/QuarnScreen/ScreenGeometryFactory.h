/// \file
/// Screens by type name.
#pragma once

#include <memory>
#include <string>

#include <Common/Export.h>
#include <QuarnScreen/IScreenGeometry.h>

/// Makes screens from the type names of saved elements. It has no state and is safe on any number of threads.
class QUARNSCREEN_EXPORT ScreenGeometryFactory {
public:
    /// An empty screen of a type, to be filled by IXmlSerializable::deserialize().
    /// \param typeName what ITypeid::getType() answers, such as "class FlatScreen"
    /// \throws ZelmoreExceptionRuntime for an unknown type
    static std::shared_ptr<IScreenGeometry> createScreenGeometry(const std::string& typeName);
};
