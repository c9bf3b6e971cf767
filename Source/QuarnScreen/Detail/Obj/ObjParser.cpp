#include "ObjParser.h"

#include <cstddef>
#include <exception>
#include <new>
#include <thread>

#include <QuarnScreen/Detail/Platform/PagePrefault.h>

#include "ObjFaceScan.h"
#include "ObjVertexScan.h"

namespace quarn::detail {

namespace {

// Runs a scan and keeps what it throws.
template <class Scan>
std::exception_ptr failureOf(const Scan& scan) noexcept {
    try {
        scan();
    } catch (...) {
        return std::current_exception();
    }
    return nullptr;
}

// Makes room for the triangles of a large mesh. A text that would need much more memory than its own size is
// hardly a mesh, and one whose first face is refused gets no triangle.
void reserveTriangles(const std::vector<ObjFace>& faces, std::size_t textSize,
                      std::vector<Triangle>& triangles, PagePrefault& pages) {
    constexpr std::size_t kMinSize = std::size_t{1} << 24U;
    constexpr std::size_t kMaxTextRatio = 8;
    const std::size_t size = faces.size() * sizeof(Triangle);
    if (size < kMinSize || size / kMaxTextRatio > textSize) return;
    if (faces.front()[0].vertex < 0 || faces.front()[0].normal < 0) return;
    try {
        triangles.reserve(triangles.size() + faces.size());
    } catch (const std::bad_alloc&) {
        // The building of the triangles finds out, if it comes to that.
        return;
    }
    pages.setRange(triangles.data() + triangles.size(), size);
}

}  // namespace

ObjData parseObj(std::string_view text, std::vector<Triangle>& triangles,
                 const std::function<void()>& meanwhile) {
    ObjData objData;
    PagePrefault pages;
    std::exception_ptr faceFailure;
    std::exception_ptr vertexFailure;
    {
        const std::jthread faceScan([&] {
            faceFailure = failureOf([&] {
                scanFaces(text, objData.faces);
                reserveTriangles(objData.faces, text.size(), triangles, pages);
                pages.prefault();
            });
        });
        const std::jthread vertexScan([&] {
            vertexFailure = failureOf([&] {
                scanVertexData(text, objData.vertexData);
                pages.prefault();
            });
        });
        meanwhile();
        pages.prefault();
    }
    if (faceFailure) std::rethrow_exception(faceFailure);
    if (vertexFailure) std::rethrow_exception(vertexFailure);
    return objData;
}

}  // namespace quarn::detail
