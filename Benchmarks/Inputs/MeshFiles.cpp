#include "Inputs/MeshFiles.h"

#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include <Common/TextConversion.h>

namespace quarn::bench {
namespace {

template <class... Numbers>
void appendLine(std::string& text, const char* pattern, Numbers... numbers) {
    std::array<char, 128> line{};
    text.append(line.data(),
                static_cast<std::size_t>(std::snprintf(line.data(), line.size(), pattern, numbers...)));
}

void appendVertices(std::string& text, const std::vector<TriangleVertex>& vertices) {
    for (const TriangleVertex& vertex : vertices)
        appendLine(text, "v %.6f %.6f %.6f\n", vertex.position[0], vertex.position[1], vertex.position[2]);
    for (const TriangleVertex& vertex : vertices)
        appendLine(text, "vt %.6f %.6f\n", vertex.uv[0], vertex.uv[1]);
    for (const TriangleVertex& vertex : vertices)
        appendLine(text, "vn %.6f %.6f %.6f\n", vertex.normal[0], vertex.normal[1], vertex.normal[2]);
}

void appendFaces(std::string& text, const std::vector<std::size_t>& corners) {
    for (std::size_t i = 0; i < corners.size(); i += 3) {
        const std::size_t a = corners[i] + 1;
        const std::size_t b = corners[i + 1] + 1;
        const std::size_t c = corners[i + 2] + 1;
        appendLine(text, "f %zu/%zu/%zu %zu/%zu/%zu %zu/%zu/%zu\n", a, a, a, b, b, b, c, c, c);
    }
}

std::string objText(const test::Mesh& mesh, const test::GridSize& cells, bool isShared) {
    std::vector<TriangleVertex> vertices;
    std::vector<std::size_t> corners;
    const auto columns = static_cast<std::size_t>(cells.columns) + 1;
    if (isShared) vertices.resize(columns * (static_cast<std::size_t>(cells.rows) + 1));
    for (const Triangle& triangle : mesh) {
        for (const TriangleVertex& vertex : triangle.vertices) {
            if (!isShared) {
                corners.push_back(vertices.size());
                vertices.push_back(vertex);
                continue;
            }
            // The UVs of a grid determine row and column.
            const auto column = static_cast<std::size_t>(std::lround(vertex.uv[0] * cells.columns));
            const auto row = static_cast<std::size_t>(std::lround(vertex.uv[1] * cells.rows));
            corners.push_back(row * columns + column);
            vertices[corners.back()] = vertex;
        }
    }
    std::string text;
    appendVertices(text, vertices);
    appendFaces(text, corners);
    return text;
}

template <class Number>
void appendBytes(std::string& bytes, Number number) {
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void appendFloats(std::string& bytes, const Point<double, 3>& point) {
    for (std::size_t i = 0; i < 3; ++i) appendBytes(bytes, static_cast<float>(point[i]));
}

std::string stlBytes(const test::Mesh& mesh) {
    constexpr std::size_t kHeaderSize = 80;
    std::string bytes(kHeaderSize, ' ');
    appendBytes(bytes, static_cast<std::int32_t>(mesh.size()));
    for (const Triangle& triangle : mesh) {
        appendFloats(bytes, triangle.normal);
        for (const TriangleVertex& vertex : triangle.vertices) appendFloats(bytes, vertex.position);
        appendBytes(bytes, std::uint16_t{0});
    }
    return bytes;
}

std::string contentsOf(const MeshCase& mesh, FileForm form) {
    const test::Mesh triangles = test::dome(mesh.cells());
    if (form == FileForm::Stl) return stlBytes(triangles);
    const bool isShared = form == FileForm::SharedObj || form == FileForm::RefusedObj;
    std::string text = objText(triangles, mesh.cells(), isShared);
    if (form == FileForm::RefusedObj || form == FileForm::UnsharedRefusedObj) text += "f 1/1 2/2 3/3\n";
    return text;
}

}  // namespace

MeshFile::MeshFile(const MeshCase& mesh, FileForm form)
    : name(std::filesystem::temp_directory_path() /
           ("quarnscreen-bench-" + std::to_string(getpid()) + "-" + std::to_string(mesh.triangleCount) + "-" +
            std::to_string(static_cast<int>(form)))) {
    const std::string contents = contentsOf(mesh, form);
    bytes = contents.size();
    std::ofstream(name, std::ios::binary) << contents;
}

MeshFile::~MeshFile() {
    std::error_code ignored;
    std::filesystem::remove(name, ignored);
}

std::wstring MeshFile::widePath() const {
    return fromUtf8(name);
}

const MeshFile& fileOf(const MeshCase& mesh, FileForm form) {
    static std::map<FileForm, PerMesh<MeshFile>> files;
    return files[form].get(mesh, [&] { return std::make_unique<MeshFile>(mesh, form); });
}

}  // namespace quarn::bench
