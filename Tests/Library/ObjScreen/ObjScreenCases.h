/// \file
/// OBJ screens, texts to load into them, and the expected state after a load.
#pragma once

#include <gtest/gtest.h>

#include <new>
#include <ostream>
#include <string>
#include <vector>

#include <QuarnScreen/OBJScreen.h>

#include "Support/Mesh/TriangleBits.h"

namespace quarn::test {

/// An OBJ screen that shows what it keeps for its own.
class OpenObjScreen : public OBJScreen {
public:
    using OBJScreen::OBJScreen;
    [[nodiscard]] std::vector<Triangle>& mesh() { return triangles; }
    [[nodiscard]] const std::vector<Triangle>& mesh() const { return triangles; }
    [[nodiscard]] const Boundary& outline() const { return boundary; }
};

/// How a load ended.
struct LoadEnd {
    int kind = 0;  ///< That of an ObjLoadException, 0 for none.
    std::wstring message;
    bool isOutOfMemory = false;

    friend bool operator==(const LoadEnd&, const LoadEnd&) = default;
};

inline const LoadEnd kLoaded;
inline const LoadEnd kNoVertices{2, L"No vertices found in the file.", false};
inline const LoadEnd kNoNormals{1, L"No normals found in the file.", false};
inline const LoadEnd kBadVertex{2, L"Bad vertex references in the file.", false};
inline const LoadEnd kBadNormal{1, L"Bad Normal references in the file.", false};
inline const LoadEnd kNotOpened{3, L"Could not open the file.", false};
inline const LoadEnd kOutOfMemory{0, L"", true};

void PrintTo(const LoadEnd& end, std::ostream* out);

/// Calls \p load and returns its result. The source of an exception is checked too.
template <class Load>
LoadEnd endOf(const Load& load) {
    try {
        load();
    } catch (const ObjLoadException& error) {
        EXPECT_EQ(error.file(), "");
        EXPECT_EQ(error.line(), -1);
        return {error.status(), error.message(), false};
    } catch (const std::bad_alloc&) {
        return kOutOfMemory;
    }
    return kLoaded;
}

LoadEnd loadInto(OBJScreen& screen, const std::string& text);

/// The lines of a unit square in the plane y = 0, its faces excepted.
inline const std::string kCorners = "v 0 0 1\nv 1 0 1\nv 1 0 0\nv 0 0 0\n";
inline const std::string kUVs = "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n";
inline const std::string kNormal = "vn 0 -1 0\n";
/// Its face, of two triangles that look at the viewer.
inline const std::string kFace = "f 1/1/1 4/4/1 3/3/1 2/2/1 \n";
inline const std::string kSquare = kCorners + kUVs + kNormal + kFace;

/// The square moved to another place along the Y axis. \p y one digit
[[nodiscard]] std::string squareAt(char y);

/// A ray through the square, away from its edges, and where it goes to.
inline const Point3 kRayFrom(0.7, -1.0, 0.4);
inline const Point3 kRayTo(0.7, 0.0, 0.4);

/// OBJ text of a mesh, a vertex for each corner, with nine digits.
[[nodiscard]] std::string objTextOf(const std::vector<Triangle>& mesh);

/// The expected contents of an OBJ screen after each load, step by step.
struct ReferenceObjScreen {
    LoadEnd load(const std::string& newText);

    Matrix<float, 4> transform = Matrix<float, 4>::identity();
    int status = 5;
    ScreenGeometry::DataHash hash{};
    std::string text;
    std::vector<Triangle> triangles;
    std::vector<Triangle> scene;  ///< What the ray tracer holds.
};

/// Returns whether a screen has the expected status, digest, text, triangles, and hits of a few
/// rays.
[[nodiscard]] ::testing::AssertionResult isLike(const OpenObjScreen& screen, const ReferenceObjScreen& plain);

}  // namespace quarn::test
