/// \file
/// Comparison of triangles bit for bit, with all that they store.
#pragma once

#include "Support/GeometryBits.h"

#include <QuarnScreen/Triangle.h>

namespace quarn::test {

inline ::testing::AssertionResult sameBits(const TriangleVertex& a, const TriangleVertex& b) {
    if (auto result = sameBits(a.position, b.position); !result) return result << " of the position";
    if (auto result = sameBits(a.normal, b.normal); !result) return result << " of the corner's normal";
    if (auto result = sameBits(a.uv, b.uv); !result) return result << " of the UV";
    return ::testing::AssertionSuccess();
}

inline ::testing::AssertionResult sameBits(const Triangle& a, const Triangle& b) {
    for (std::size_t i = 0; i < 3; ++i)
        if (auto result = sameBits(a.vertices[i], b.vertices[i]); !result)
            return result << " of corner " << i;
    if (auto result = sameBits(a.normal, b.normal); !result) return result << " of the normal";
    if (auto result = sameBits(a.edge1, b.edge1); !result) return result << " of edge 1";
    if (auto result = sameBits(a.edge2, b.edge2); !result) return result << " of edge 2";
    if (auto result = sameBits(a.uvEdge1, b.uvEdge1); !result) return result << " of UV edge 1";
    if (auto result = sameBits(a.uvEdge2, b.uvEdge2); !result) return result << " of UV edge 2";
    if (auto result = sameBits(a.uvDeterminant, b.uvDeterminant); !result)
        return result << " of the UV determinant";
    if (auto result = sameBits(a.centroid, b.centroid); !result) return result << " of the centroid";
    if (auto result = sameBits(a.uvCentroid, b.uvCentroid); !result) return result << " of the UV centroid";
    return ::testing::AssertionSuccess();
}

/// Lists of triangles. It stands by its own name: the general comparison of lists does not know of
/// triangles.
inline ::testing::AssertionResult sameTriangles(const std::vector<Triangle>& a,
                                                const std::vector<Triangle>& b) {
    if (a.size() != b.size())
        return ::testing::AssertionFailure() << a.size() << " and " << b.size() << " triangles";
    for (std::size_t i = 0; i < a.size(); ++i)
        if (auto result = sameBits(a[i], b[i]); !result) return result << " of triangle " << i;
    return ::testing::AssertionSuccess();
}

}  // namespace quarn::test
