#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjTriangles.h>

#include <string>

#include "Library/Obj/ObjCases.h"

using namespace quarn;
using namespace quarn::test;

namespace {

const std::string kPoints = "v 0 0 0\nv 1 0 0\nv 0 0 1\nv 1 0 1\n";
const std::string kUVs = "vt 0 0\nvt 1 0\nvt 0 1\nvt 1 1\n";
const std::string kNormal = "vn 0 -1 0\n";
const std::string kFace = "f 1/1/1 2/2/1 3/3/1\n";

struct Built {
    detail::ObjOutcome outcome;
    std::vector<Triangle> triangles;
};

Built built(const std::string& text) {
    Built result;
    const detail::ObjData lists = scannedText(text).lists;
    result.outcome = detail::buildObjTriangles(lists, Matrix<float, 4>::identity(), result.triangles);
    return result;
}

void expectSound(const std::string& text, detail::ObjStatus status, std::size_t triangles) {
    const Built result = built(text);
    EXPECT_EQ(result.outcome.status, status) << text;
    EXPECT_FALSE(result.outcome.failure.has_value()) << text;
    EXPECT_EQ(result.triangles.size(), triangles) << text;
}

void expectFailure(const std::string& text, detail::ObjStatus status, int kind, const std::wstring& message,
                   std::size_t triangles = 0) {
    const Built result = built(text);
    EXPECT_EQ(result.outcome.status, status) << text;
    ASSERT_TRUE(result.outcome.failure.has_value()) << text;
    EXPECT_EQ(result.outcome.failure->status(), kind) << text;
    EXPECT_EQ(result.outcome.failure->message(), message) << text;
    EXPECT_EQ(result.outcome.failure->line(), -1);
    EXPECT_EQ(result.outcome.failure->file(), "");
    EXPECT_EQ(result.triangles.size(), triangles) << text;
}

void expectBadVertices(const std::string& text, std::size_t triangles = 0) {
    expectFailure(text, detail::ObjStatus::BadVertices, 2, L"Bad vertex references in the file.", triangles);
}

void expectBadNormals(const std::string& text, std::size_t triangles = 0) {
    expectFailure(text, detail::ObjStatus::BadNormals, 1, L"Bad Normal references in the file.", triangles);
}

}  // namespace

TEST(ObjTriangles, SoundMeshIsOk) {
    expectSound(kPoints + kUVs + kNormal + kFace + "f 2/2/1 4/4/1 3/3/1\n", detail::ObjStatus::Ok, 2);
}

TEST(ObjTriangles, FacesMayStandBeforeWhatTheyReferTo) {
    expectSound(kFace + kNormal + kUVs + kPoints, detail::ObjStatus::Ok, 1);
}

TEST(ObjTriangles, NoVerticesIsAFailureBeforeNoNormals) {
    const std::wstring message = L"No vertices found in the file.";
    expectFailure(kUVs + kNormal + kFace, detail::ObjStatus::BadVertices, 2, message);
    expectFailure("# nothing\n", detail::ObjStatus::BadVertices, 2, message);
}

TEST(ObjTriangles, NoNormalsIsAFailure) {
    const std::wstring message = L"No normals found in the file.";
    expectFailure(kPoints + kUVs + kFace, detail::ObjStatus::BadNormals, 1, message);
    expectFailure(kPoints, detail::ObjStatus::BadNormals, 1, message);
}

TEST(ObjTriangles, NoTextureCoordinatesLeaveNoParameterization) {
    expectSound(kPoints + kNormal + "f 1//1 2//1 3//1\n", detail::ObjStatus::NoParameterization, 1);
    expectSound(kPoints + kNormal + kFace, detail::ObjStatus::NoParameterization, 1);
}

TEST(ObjTriangles, NoFacesGiveNoTriangles) {
    expectSound(kPoints + kUVs + kNormal, detail::ObjStatus::Ok, 0);
    expectSound(kPoints + kNormal, detail::ObjStatus::NoParameterization, 0);
}

TEST(ObjTriangles, VertexReferencesOutsideOfTheListAreBad) {
    const std::string mesh = kPoints + kUVs + kNormal;
    for (const char* index : {"0", "5", "-1", "", "2147483647", "2147483648", "4294967296", "99999999999999"})
        expectBadVertices(mesh + "f 1/1/1 2/2/1 " + index + "/3/1\n");
    // The last one of the list, and one that wraps to it.
    expectSound(mesh + "f 1/1/1 2/2/1 4/3/1\n", detail::ObjStatus::Ok, 1);
    expectSound(mesh + "f 1/1/1 2/2/1 4294967300/3/1\n", detail::ObjStatus::Ok, 1);
}

TEST(ObjTriangles, NormalReferencesOutsideOfTheListAreBad) {
    const std::string mesh = kPoints + kUVs + kNormal;
    for (const char* corner :
         {"3/3/0", "3/3/2", "3/3/-1", "3/-1/1", "3/3/", "3/3", "3", "3//", "3/ 3/1", "3/3/2147483648"})
        expectBadNormals(mesh + "f 1/1/1 2/2/1 " + corner + "\n");
}

TEST(ObjTriangles, TextureReferencesOutsideOfTheListLeaveNoParameterization) {
    const std::string mesh = kPoints + kUVs + kNormal;
    for (const char* corner : {"3/0/1", "3/5/1", "3//1", "3/2147483648/1"})
        expectSound(mesh + "f 1/1/1 2/2/1 " + corner + "\n", detail::ObjStatus::NoParameterization, 1);
}

TEST(ObjTriangles, FirstBadReferenceDecides) {
    const std::string mesh = kPoints + kUVs + kNormal;
    expectBadVertices(mesh + "f 9/1/9 1/1/1 1/1/1\n");
    expectBadNormals(mesh + "f 1/1/9 9/1/1 1/1/1\n");
    expectBadVertices(mesh + "f 1/1/1 9/1/1 1/1/9\n");
    expectBadNormals(mesh + kFace + "f 1/1/9 1/1/1 1/1/1\nf 9/1/1 1/1/1 1/1/1\n", 1);
}

TEST(ObjTriangles, TrianglesBeforeTheFirstBadReferenceStay) {
    const std::string mesh = kPoints + kUVs + kNormal + kFace + kFace;
    expectBadVertices(mesh + "f 1/1/1 2/2/1 5/3/1\n" + kFace, 2);
    expectBadNormals(mesh + "f 1/1/1 2/2/1 3/3/2\n" + kFace, 2);
    // A fan's first triangle is sound.
    expectBadVertices(mesh + "f 1/1/1 2/2/1 3/3/1 5/1/1\n", 3);
}

TEST(ObjTriangles, CommentBehindTheCornersIsABadVertexReference) {
    expectBadVertices(kPoints + kUVs + kNormal + "f 1/1/1 2/2/1 3/3/1 # one\n", 1);
}

TEST(ObjTriangles, UVOutsideOfTheUnitSquareIsReportedAndKept) {
    for (const char* uv : {"-0.001 0", "0 -0.001", "1.001 0", "0 1.001", "1e39 0"}) {
        const Built result = built(kPoints + kNormal + "vt " + uv + "\n" + kUVs + kFace);
        EXPECT_EQ(result.outcome.status, detail::ObjStatus::UvOutOfRange) << uv;
        ASSERT_EQ(result.triangles.size(), 1U);
        const auto& kept = result.triangles[0].vertices[0].uv;
        EXPECT_TRUE(kept[0] < 0.0 || kept[0] > 1.0 || kept[1] < 0.0 || kept[1] > 1.0);
    }
    expectSound(kPoints + kNormal + "vt -0 1.00000001\n" + kUVs + kFace, detail::ObjStatus::Ok, 1);
}

TEST(ObjTriangles, UVOutsideThatNoCornerHasDoesNoHarm) {
    expectSound(kPoints + kNormal + kUVs + "vt 2 2\n" + kFace, detail::ObjStatus::Ok, 1);
}

TEST(ObjTriangles, MissingUVGoesBeforeAUVOutside) {
    const std::string mesh = kPoints + kNormal + "vt 2 2\n";
    expectSound(mesh + "f 1/1/1 2/1/1 3//1\n", detail::ObjStatus::NoParameterization, 1);
    expectSound(mesh + "f 1//1 2/1/1 3/1/1\nf 1/1/1 2/1/1 3/1/1\n", detail::ObjStatus::NoParameterization, 2);
}
