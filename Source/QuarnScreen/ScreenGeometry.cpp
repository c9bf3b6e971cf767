#include <QuarnScreen/ScreenGeometry.h>

#include <openssl/sha.h>

log4cxx::LoggerPtr ScreenGeometry::log =
    log4cxx::Logger::getLogger(std::wstring(L"Quarn.QuarnScreen.ScreenGeometry"));

ScreenGeometry::~ScreenGeometry() = default;

ScreenGeometry::DataHash ScreenGeometry::calculateHash(const unsigned char* data, std::uint64_t size) {
    DataHash hash{};
    SHA1(data, size, hash.data());
    return hash;
}

ScreenGeometry::DataHash ScreenGeometry::calculateHash(const std::string& data) {
    return calculateHash(reinterpret_cast<const unsigned char*>(data.data()), data.size());
}

void ScreenGeometry::sampleBoundaryUV(std::vector<Point<double, 2>>& /*boundary*/) const {}

bool ScreenGeometry::isValid() const {
    return true;
}

void ScreenGeometry::getTesselation(std::vector<Triangle>& /*triangles*/) const {}

bool ScreenGeometry::hasTesselation() const {
    return false;
}
