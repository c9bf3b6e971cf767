#include "ObjParser.h"

#include <cstddef>
#include <exception>
#include <new>
#include <thread>

#include <QuarnScreen/Detail/Platform/PagePrefault.h>

#include "ObjFaceScan.h"
#include "ObjVertexScan.h"

namespace quarn {

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
void offerRoom(const std::vector<ObjFace>& faces, std::size_t textSize, std::vector<Triangle>& triangles,
               PagePopulation& pages) {
    constexpr std::size_t kLeastSize = std::size_t{1} << 24U;
    constexpr std::size_t kMostTimesText = 8;
    const std::size_t size = faces.size() * sizeof(Triangle);
    if (size < kLeastSize || size / kMostTimesText > textSize) return;
    if (faces.front()[0].vertex < 0 || faces.front()[0].normal < 0) return;
    try {
        triangles.reserve(triangles.size() + faces.size());
    } catch (const std::bad_alloc&) {
        // The building of the triangles finds out, if it comes to that.
        return;
    }
    pages.offer(triangles.data() + triangles.size(), size);
}

}  // namespace

ObjLists scanObjText(std::string_view text, std::vector<Triangle>& triangles,
                     const std::function<void()>& meanwhile) {
    ObjLists lists;
    PagePopulation pages;
    std::exception_ptr faceFailure;
    std::exception_ptr vertexFailure;
    {
        const std::jthread faceScan([&] {
            faceFailure = failureOf([&] {
                scanFaces(text, lists.faces);
                offerRoom(lists.faces, text.size(), triangles, pages);
                pages.populate();
            });
        });
        const std::jthread vertexScan([&] {
            vertexFailure = failureOf([&] {
                scanVertexData(text, lists.vertexData);
                pages.populate();
            });
        });
        meanwhile();
        pages.populate();
    }
    if (faceFailure) std::rethrow_exception(faceFailure);
    if (vertexFailure) std::rethrow_exception(vertexFailure);
    return lists;
}

}  // namespace quarn
