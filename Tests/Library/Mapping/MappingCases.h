/// \file
/// Meshes, UVs and rays for queries of mappings, and the result of a query.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include <QuarnScreen/Ray.h>

#include "Reference/Mesh/ReferenceMapping.h"
#include "Support/LogCapture.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"

namespace quarn::test {

inline constexpr const wchar_t* kScreenLogger = L"Quarn.QuarnScreen.ScreenGeometry";

/// What mapInto3D() answered.
struct Mapped {
    bool isAnswer = false;
    Point3 point;
};
::testing::AssertionResult sameBits(const Mapped& a, const Mapped& b);

/// Queries a screen or the reference implementation. \p before is what the caller's position holds
/// beforehand.
template <class Mapping>
Mapped map(Mapping& mapping, const Point2& uv, bool extrapolate, const Point3& before = {}) {
    Mapped mapped{false, before};
    mapped.isAnswer = mapping.mapInto3D(uv, mapped.point, extrapolate);
    return mapped;
}

/// What a capture saw, with every NaN written alike: the sign of one is not defined.
[[nodiscard]] std::vector<LogLine> linesOf(const LogCapture& capture);
[[nodiscard]] std::string withPlainNaN(std::string text);

/// True if the screen's cache contains a UV. The check is a query, so the cache contains it from
/// then on.
[[nodiscard]] bool wasCached(const TriangleScreen& screen, const Point2& uv);

/// Spoils what triangles derive from their UVs, or their edges in space. Corners stay.
void spoilUVFields(Mesh& mesh, Rng& rng, double share);
/// Gives some corners infinite, huge or tiny UVs, but no NaN, and computes all fields again.
void spoilUVs(Mesh& mesh, Rng& rng, double share);

/// Any mesh, often with UVs or derived fields that do not fit.
[[nodiscard]] Mesh anyUVMesh(Rng& rng);

/// A UV on a corner or an edge or next to it by the last bit, in a triangle, around the boundary,
/// far away, or any at all.
[[nodiscard]] Point2 anyUV(const Mesh& mesh, Rng& rng);

/// A ray towards the mesh, past its edge, at a boundary point, along its plane, or any at all.
[[nodiscard]] Ray anyRay(const Mesh& mesh, const Boundary& outline, Rng& rng);

}  // namespace quarn::test
