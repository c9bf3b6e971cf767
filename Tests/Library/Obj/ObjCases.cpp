#include "Library/Obj/ObjCases.h"

#include <QuarnScreen/Detail/Obj/ObjParser.h>
#include <QuarnScreen/Detail/Obj/ObjTriangles.h>

#include <bit>
#include <cstdint>
#include <new>

#include "Support/Mesh/TriangleBits.h"

namespace quarn::test {

namespace {

template <std::size_t N>
::testing::AssertionResult sameFloats(const std::vector<std::array<float, N>>& a,
                                      const std::vector<std::array<float, N>>& b) {
    if (a.size() != b.size())
        return ::testing::AssertionFailure() << a.size() << " and " << b.size() << " records";
    for (std::size_t i = 0; i < a.size(); ++i)
        for (std::size_t k = 0; k < N; ++k)
            if (auto result = sameBits(a[i][k], b[i][k]); !result)
                return result << " in record " << i << ", value " << k;
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult sameFaces(const std::vector<detail::ObjFace>& a,
                                     const std::vector<std::array<ReferenceObjCorner, 3>>& b) {
    if (a.size() != b.size())
        return ::testing::AssertionFailure() << a.size() << " and " << b.size() << " faces";
    for (std::size_t i = 0; i < a.size(); ++i)
        for (std::size_t k = 0; k < 3; ++k) {
            const detail::ObjCorner& corner = a[i][k];
            if (ReferenceObjCorner{corner.vertex, corner.textureCoordinate, corner.normal} != b[i][k])
                return ::testing::AssertionFailure() << "face " << i << " differs in corner " << k;
        }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult sameLoad(const detail::ObjOutcome& outcome, const std::vector<Triangle>& triangles,
                                    const ReferenceObjResult& plain) {
    const int kind = outcome.failure ? outcome.failure->status() : 0;
    const std::wstring message = outcome.failure ? outcome.failure->message() : L"";
    if (static_cast<int>(outcome.status) != plain.status || kind != plain.failureKind ||
        message != plain.failure)
        return ::testing::AssertionFailure()
               << "status " << static_cast<int>(outcome.status) << " and " << plain.status << ", kind "
               << kind << " and " << plain.failureKind;
    return sameTriangles(triangles, plain.triangles);
}

}  // namespace

ScannedText scannedText(const std::string& text) {
    ScannedText result;
    detail::scanVertexData(text, result.lists.vertexData);
    try {
        detail::scanFaces(text, result.lists.faces);
    } catch (const std::bad_alloc&) {
        result.isEndless = true;
    }
    return result;
}

::testing::AssertionResult sameLists(const detail::ObjData& lists, const ReferenceObjData& plain) {
    const detail::ObjVertexData& data = lists.vertexData;
    if (auto result = sameFloats(data.vertices, plain.vertices); !result) return result << " of the vertices";
    if (auto result = sameFloats(data.textureCoordinates, plain.textureCoordinates); !result)
        return result << " of the texture coordinates";
    if (data.normalCount != plain.normals.size())
        return ::testing::AssertionFailure()
               << data.normalCount << " and " << plain.normals.size() << " normals";
    return sameFaces(lists.faces, plain.faces);
}

::testing::AssertionResult isReadAsByReference(const std::string& text, const Matrix<float, 4>& transform) {
    const ReferenceObjData plain = referenceObjData(text);
    const ScannedText scanned = scannedText(text);
    if (scanned.isEndless != plain.isEndless)
        return ::testing::AssertionFailure()
               << "endless: " << scanned.isEndless << " and " << plain.isEndless;
    if (auto result = sameLists(scanned.lists, plain); !result) return result;
    if (plain.isEndless) return ::testing::AssertionSuccess();
    std::vector<Triangle> triangles;
    const detail::ObjOutcome outcome = detail::buildObjTriangles(scanned.lists, transform, triangles);
    return sameLoad(outcome, triangles, referenceObjResult(plain, transform));
}

}  // namespace quarn::test
