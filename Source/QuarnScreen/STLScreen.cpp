#include <QuarnScreen/STLScreen.h>

#include <fstream>
#include <locale>
#include <sstream>
#include <utility>

#include <Common/Detail/Assert.h>
#include <QuarnScreen/Detail/Editing/UnitRectangle.h>
#include <QuarnScreen/Detail/Platform/InputFile.h>
#include <QuarnScreen/Detail/Stl/StlParser.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

STLScreen::STLScreen() = default;
STLScreen::~STLScreen() = default;

const std::string& STLScreen::type() {
    static const std::string name = "class STLScreen";
    return name;
}

const std::string& STLScreen::getType() const {
    return type();
}

bool STLScreen::isValid() const {
    return valid;
}

bool STLScreen::hasParameterization() const {
    return false;
}

STLScreen::DataHash STLScreen::getUniqueDataHash() const {
    return dataHash;
}

std::vector<Point<double, 3>> STLScreen::getDefaultCalibrationPoints(int /*columns*/, int /*rows*/) const {
    return {};
}

void STLScreen::updateGeometry(IScreenConfig* /*config*/) {}

void STLScreen::deserializeFromFile(const std::wstring& path) {
    std::ifstream file;
    valid = quarn::detail::openInputFile(file, path, std::ios::in | std::ios::binary);
    if (!valid) return;
    // The numbers of a text have a decimal point in every global locale.
    file.imbue(std::locale::classic());
    deserialize(file);
}

void STLScreen::deserialize(std::istream& in) {
    const std::istream::pos_type start = in.tellg();
    loadedFileContents = quarn::detail::readRest(in);
    in.seekg(start);
    valid = quarn::detail::readStl(in, loadedFileContents.size(), triangles);
    if (!valid) {
        loadedFileContents.clear();
        dataHash = calculateHash(loadedFileContents);
    }
    addScreenToScene();
}

void STLScreen::scaleToUnitRectangle() {
    quarn::detail::scaleToUnitRectangle(triangles);
}

void STLScreen::serialize(std::wostream& out, int indent) {
    ScreenGeometryXmlHelper::serializeAndBase64EncodeScreenGeometry(out, indent, getType(),
                                                                    loadedFileContents);
}

void STLScreen::deserialize(xercesc::DOMNode* node) {
    QUARN_ASSERT(node != nullptr);
    std::istringstream stream(ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(node));
    stream.imbue(std::locale::classic());
    deserialize(stream);
}
