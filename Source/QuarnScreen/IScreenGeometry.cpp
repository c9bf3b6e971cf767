#include <QuarnScreen/IScreenGeometry.h>

// Define the first virtual function of each interface here, so that its type information exists
// once.
ITypeid::~ITypeid() = default;
IXmlSerializable::~IXmlSerializable() = default;
IScreenGeometry::~IScreenGeometry() = default;
IScreenConfig::~IScreenConfig() = default;
void IScreenConfig::firstReserved() {}
void IScreenConfig::secondReserved() {}

const bool IScreenGeometry::kNoExtrapolation = false;
