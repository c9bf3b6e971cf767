#include "Library/ObjScreen/ObjScreenCases.h"

#include <limits>
#include <locale>
#include <sstream>

#include "Reference/Formats/ReferenceObjReader.h"
#include "Support/HashText.h"
#include "Support/Mesh/TriangleScreen.h"

namespace quarn::test {

namespace {

// Rays along the Y axis over the part of space where the tests' meshes lie.
::testing::AssertionResult sameHits(const OBJScreen& screen, const ReferenceObjScreen& plain) {
    TriangleScreen stale(plain.scene);
    stale.reindex(plain.triangles);
    for (int i = 0; i < 25; ++i) {
        const int row = i / 5;
        const double x = -1.9 + 0.77 * (i % 5);
        const double z = -1.37 + 0.71 * row;
        const Point3 from(x, -20.0, z);
        const Point3 to(x, 0.0, z);
        if (auto result = sameBits(screen.intersect(from, to), stale.intersect(from, to)); !result)
            return result << " for the ray at x " << x << ", z " << z;
    }
    return ::testing::AssertionSuccess();
}

}  // namespace

void PrintTo(const LoadEnd& end, std::ostream* out) {
    *out << "kind " << end.kind << ", \"" << ::testing::PrintToString(end.message) << "\", "
         << (end.isOutOfMemory ? "out of memory" : "memory enough");
}

LoadEnd loadInto(OBJScreen& screen, const std::string& text) {
    return endOf([&] {
        std::istringstream stream(text);
        screen.deserialize(stream);
    });
}

std::string squareAt(char y) {
    std::string text = kSquare;
    for (std::size_t at = text.find("v "); at != std::string::npos; at = text.find("v ", at + 1))
        text[at + 4] = y;
    return text;
}

std::string objTextOf(const std::vector<Triangle>& mesh) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(std::numeric_limits<float>::max_digits10);
    text << kNormal;
    int number = 0;
    for (const Triangle& triangle : mesh) {
        for (const TriangleVertex& corner : triangle.vertices)
            text << "v " << corner.position[0] << " " << corner.position[1] << " " << corner.position[2]
                 << "\nvt " << corner.uv[0] << " " << corner.uv[1] << "\n";
        text << "f";
        for (int corner = 0; corner < 3; ++corner) {
            ++number;
            text << " " << number << "/" << number << "/1";
        }
        text << "\n";
    }
    return text.str();
}

LoadEnd ReferenceObjScreen::load(const std::string& newText) {
    triangles.clear();
    text.clear();
    if (newText.empty()) return kLoaded;
    text = referenceBlanked(newText);
    const ReferenceObjData lists = referenceObjData(text);
    if (lists.isEndless) return kOutOfMemory;
    const ReferenceObjResult result = referenceObjResult(lists, transform);
    status = result.status;
    triangles = result.triangles;
    if (result.failureKind != 0) return {result.failureKind, result.failure, false};
    hash = ScreenGeometry::calculateHash(text);
    if (!triangles.empty()) scene = triangles;
    Boundary outline;
    if (status == 0 && !MeshScreen::findBoundaryNew(triangles, outline)) status = 6;
    return kLoaded;
}

::testing::AssertionResult isLike(const OpenObjScreen& screen, const ReferenceObjScreen& plain) {
    if (screen.getStatus() != plain.status)
        return ::testing::AssertionFailure() << "status " << screen.getStatus() << " and " << plain.status;
    if (screen.getUniqueDataHash() != plain.hash)
        return ::testing::AssertionFailure()
               << "digests " << hexOf(screen.getUniqueDataHash()) << " and " << hexOf(plain.hash);
    if (screen.getLoadedFileContents() != plain.text)
        return ::testing::AssertionFailure() << "the text is:\n" << screen.getLoadedFileContents();
    if (auto result = sameTriangles(screen.mesh(), plain.triangles); !result) return result;
    return sameHits(screen, plain);
}

}  // namespace quarn::test
