#include <QuarnScreen/OBJScreen.h>

#include <fstream>

#include <QuarnScreen/Detail/Editing/UnitRectangle.h>
#include <QuarnScreen/Detail/Obj/ObjContinuations.h>
#include <QuarnScreen/Detail/Obj/ObjParser.h>
#include <QuarnScreen/Detail/Obj/ObjStream.h>
#include <QuarnScreen/Detail/Obj/ObjTriangles.h>
#include <QuarnScreen/Detail/Platform/InputFile.h>

namespace {

constexpr int kFileNotOpenedKind = 3;

using quarn::detail::ObjStatus;
static_assert(static_cast<int>(ObjStatus::Ok) == OBJScreen::StatusOk &&
              static_cast<int>(ObjStatus::NoParameterization) == OBJScreen::StatusNoParameterization &&
              static_cast<int>(ObjStatus::BadNormals) == OBJScreen::StatusBadNormals &&
              static_cast<int>(ObjStatus::BadVertices) == OBJScreen::StatusBadVertices &&
              static_cast<int>(ObjStatus::UvOutOfRange) == OBJScreen::StatusUvOutOfRange);

// Unit vector of an axis by its name; zero for any other text.
Point<float, 3> axisOf(const std::wstring& name) {
    if (name.empty()) return {};
    const float sign = name.front() == L'-' ? -1.0F : 1.0F;
    switch (name.back()) {
        case L'X':
            return {sign, 0.0F, 0.0F};
        case L'Y':
            return {0.0F, sign, 0.0F};
        case L'Z':
            return {0.0F, 0.0F, sign};
        default:
            return {};
    }
}

}  // namespace

OBJScreen::OBJScreen(std::wstring forward, std::wstring upward, float factor)
    : axisForward(std::move(forward)), axisUpward(std::move(upward)), scale(factor) {}

OBJScreen::~OBJScreen() = default;

const std::string& OBJScreen::type() {
    static const std::string name = "class OBJScreen";
    return name;
}

const std::string& OBJScreen::getType() const {
    return type();
}

OBJScreen::Status OBJScreen::getStatus() const {
    return status;
}

bool OBJScreen::hasValidParameterization() const {
    return status == StatusOk;
}

bool OBJScreen::isValid() const {
    return status == StatusOk || status == StatusNoParameterization || status == StatusBadBoundary ||
           status == StatusUvOutOfRange;
}

bool OBJScreen::hasParameterization() const {
    return status == StatusOk || status == StatusUvOutOfRange;
}

OBJScreen::DataHash OBJScreen::getUniqueDataHash() const {
    return dataHash;
}

void OBJScreen::updateGeometry(IScreenConfig* /*config*/) {}

const std::string& OBJScreen::getLoadedFileContents() const {
    return loadedFileContents;
}

void OBJScreen::scaleToUnitRectangle() {
    quarn::detail::scaleToUnitRectangle(triangles);
}

void OBJScreen::replaceNewLineEscapeSequencesWithBlanks(std::string& text) {
    quarn::detail::blankContinuations(text);
}

Matrix<float, 4> OBJScreen::getTransformMatrix(const std::wstring& axisForward,
                                               const std::wstring& axisUpward, float scale) {
    const Point<float, 3> forward = axisOf(axisForward);
    const Point<float, 3> upward = axisOf(axisUpward);
    const Point<float, 3> side = cross(forward, upward);
    Matrix<float, 4> axes = Matrix<float, 4>::identity();
    Matrix<float, 4> scaling = Matrix<float, 4>::identity();
    for (std::size_t i = 0; i < 3; ++i) {
        axes(i, 0) = side[i];
        axes(i, 1) = forward[i];
        axes(i, 2) = upward[i];
        scaling(i, i) = scale;
    }
    Matrix<float, 4> toScreen;
    (void)axes.inverse(toScreen);
    return toScreen * scaling;
}

void OBJScreen::deserializeFromFile(const std::wstring& path) {
    std::ifstream file;
    if (!quarn::detail::openInputFile(file, path, std::ios::in)) {
        status = StatusFileNotOpened;
        throw ObjLoadException(kFileNotOpenedKind, L"Could not open the file.");
    }
    deserialize(file);
}

void OBJScreen::deserialize(std::istream& in) {
    triangles.clear();
    try {
        quarn::detail::readWholeStream(in, loadedFileContents);
        if (loadedFileContents.empty())
            dropTriangleData();
        else
            load();
    } catch (...) {
        // Nothing may refer to the triangles that went.
        dropTriangleData();
        throw;
    }
}

void OBJScreen::load() {
    quarn::detail::blankContinuations(loadedFileContents);
    DataHash hash{};
    // The lists of the scan are gone before the indexes are made: a large mesh needs the memory.
    const quarn::detail::ObjOutcome outcome = quarn::detail::buildObjTriangles(
        quarn::detail::parseObj(loadedFileContents, triangles,
                                [&] { hash = calculateHash(loadedFileContents); }),
        getTransformMatrix(axisForward, axisUpward, scale), triangles);
    status = static_cast<Status>(outcome.status);
    if (outcome.failure) throw ObjLoadException(*outcome.failure);
    dataHash = hash;
    if (!isValid()) loadedFileContents.clear();
    addScreenToScene();
    if (status == StatusOk && !hasValidBoundary()) status = StatusBadBoundary;
}
