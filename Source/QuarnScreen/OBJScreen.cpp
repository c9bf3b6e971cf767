#include <QuarnScreen/OBJScreen.h>

#include <clocale>
#include <cwchar>
#include <fstream>
#include <sstream>

#include <Common/Detail/NodeText.h>
#include <Common/XmlHelper.h>
#include <QuarnScreen/Detail/Editing/UnitRectangle.h>
#include <QuarnScreen/Detail/Obj/ObjParser.h>
#include <QuarnScreen/Detail/Obj/ObjText.h>
#include <QuarnScreen/Detail/Obj/ObjTriangles.h>
#include <QuarnScreen/Detail/Platform/InputFile.h>
#include <QuarnScreen/Detail/Platform/PagePrefault.h>
#include <QuarnScreen/Detail/Xml/XmlBase64.h>
#include <QuarnScreen/Detail/Xml/XmlObjElement.h>
#include <QuarnScreen/Detail/Xml/XmlValues.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

namespace {

constexpr int kFileNotOpenedKind = 3;

using quarn::detail::ObjStatus;
static_assert(static_cast<int>(ObjStatus::Ok) == OBJScreen::StatusOk &&
              static_cast<int>(ObjStatus::NoParameterization) == OBJScreen::StatusNoParameterization &&
              static_cast<int>(ObjStatus::BadNormals) == OBJScreen::StatusBadNormals &&
              static_cast<int>(ObjStatus::BadVertices) == OBJScreen::StatusBadVertices &&
              static_cast<int>(ObjStatus::UvOutOfRange) == OBJScreen::StatusUvOutOfRange);

// Returns the unit vector of an axis by its name; zero for any other text.
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

// Returns the number at the start of a text as the C library reads it in the C locale; 0 if there
// is none.
float scaleFrom(const std::wstring& text) {
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    return static_cast<float>(wcstod_l(text.c_str(), nullptr, cLocale));
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
        // No index may refer to the removed triangles.
        dropTriangleData();
        throw;
    }
}

void OBJScreen::load() {
    quarn::detail::blankContinuations(loadedFileContents);
    DataHash hash{};
    quarn::detail::PagePrefault pages;
    const quarn::detail::ObjParseTasks tasks{
        .meanwhile =
            [&] {
                hash = calculateHash(loadedFileContents);
                pages.prefault();
            },
        .afterFaces =
            [&](const std::vector<quarn::detail::ObjFace>& faces) {
                const std::size_t size =
                    quarn::detail::reserveObjTriangles(faces, loadedFileContents.size(), triangles);
                if (size > 0) pages.setRange(triangles.data() + triangles.size(), size);
                pages.prefault();
            },
        .afterVertexData = [&] { pages.prefault(); }};
    // The parsed data is destroyed before the indexes are built, since a large mesh needs the
    // memory.
    const quarn::detail::ObjOutcome outcome =
        quarn::detail::buildObjTriangles(quarn::detail::parseObj(loadedFileContents, tasks),
                                         getTransformMatrix(axisForward, axisUpward, scale), triangles);
    status = static_cast<Status>(outcome.status);
    if (outcome.failure) throw ObjLoadException(*outcome.failure);
    dataHash = hash;
    if (!isValid()) loadedFileContents.clear();
    addScreenToScene();
    if (status == StatusOk && !hasValidBoundary()) status = StatusBadBoundary;
}

void OBJScreen::serialize(std::wostream& out, int indent) {
    ScreenGeometryXmlHelper::serializeOpenTagHasChildren(out, indent, getType());
    XmlHelper::writeIndented(indent + 1, out, std::wstring(L"<") + quarn::detail::kObjTextTag + L">");
    quarn::detail::writeBase64(out, quarn::detail::throughWideText(loadedFileContents));
    XmlHelper::writeIndented(0, out, std::wstring(L"</") + quarn::detail::kObjTextTag + L">\n");
    XmlHelper::writeTag(indent + 1, out, quarn::detail::kObjForwardTag, axisForward);
    XmlHelper::writeTag(indent + 1, out, quarn::detail::kObjUpwardTag, axisUpward);
    quarn::detail::writeNumberTag(indent + 1, out, quarn::detail::kObjScaleTag, static_cast<double>(scale));
    ScreenGeometryXmlHelper::serializeCloseTagHasChildren(out, indent);
}

void OBJScreen::deserialize(xercesc::DOMNode* node) {
    using quarn::detail::ObjElementValue;
    std::string text;
    quarn::detail::forEachObjElementValue(*node, [&](ObjElementValue value, xercesc::DOMNode& child) {
        switch (value) {
            case ObjElementValue::Text:
                text = ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(&child);
                break;
            case ObjElementValue::Forward:
                axisForward = quarn::detail::textContent(child);
                break;
            case ObjElementValue::Upward:
                axisUpward = quarn::detail::textContent(child);
                break;
            case ObjElementValue::Scale:
                scale = scaleFrom(quarn::detail::textContent(child));
                break;
        }
    });
    // Load the text last, since axes and scale apply at any place in the element.
    std::istringstream stream(std::move(text));
    deserialize(stream);
}
