// OBJ text of layouts and meshes.
#include <QuarnScreen/OBJScreen.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <locale>
#include <utility>

#include <Common/ZelmoreException.h>

namespace {

constexpr int kWrongSizeLine = 402;

std::stringstream classicStream() {
    std::stringstream text;
    text.imbue(std::locale::classic());
    return text;
}

void writePoint(std::ostream& out, const char* keyword, const Point<double, 3>& point) {
    out << keyword << ' ' << point[0] << ' ' << point[1] << ' ' << point[2] << '\n';
}

void writeUV(std::ostream& out, const Point<double, 2>& uv) {
    out << "vt " << uv[0] << ' ' << uv[1] << '\n';
}

// Writes a corner whose three references are one number.
void writeCorner(std::ostream& out, std::int64_t number) {
    out << ' ' << number << '/' << number << '/' << number;
}

void writeCellFaces(std::ostream& out,
                    const std::vector<std::pair<Point<double, 2>, Point<double, 2>>>& points,
                    const Point<int, 2>& dimensions) {
    const std::int64_t columns = dimensions[0];
    for (std::int64_t row = 0; row < dimensions[1] - std::int64_t{1}; ++row) {
        for (std::int64_t column = 0; column < columns - 1; ++column) {
            const std::int64_t a = row * columns + column + 1;
            const std::int64_t corners[] = {a, a + columns, a + columns + 1, a + 1};
            bool isWhole = true;
            for (const std::int64_t corner : corners)
                isWhole &= points[static_cast<std::size_t>(corner - 1)].second[0] != kNoUV[0];
            if (!isWhole) continue;
            out << "f ";
            for (const std::int64_t corner : corners) out << corner << '/' << corner << "/1 ";
            out << '\n';
        }
    }
}

}  // namespace

std::stringstream OBJScreen::generateOBJLayoutFormat(
    const std::vector<std::pair<Point<double, 2>, Point<double, 2>>>& points, const Point<int, 2>& dimensions,
    std::array<unsigned char, 20>& hash) {
    const std::int64_t expected = static_cast<std::int64_t>(dimensions[0]) * dimensions[1];
    if (static_cast<std::int64_t>(points.size()) != expected)
        throw ZelmoreException("Source/QuarnScreen/OBJScreen", kWrongSizeLine,
                               L"Input parameters don't match in constructor");

    std::stringstream text = classicStream();
    bool hasMissingUV = false;
    for (const auto& [position, uv] : points) text << "v " << position[0] << " 0 " << position[1] << '\n';
    for (const auto& [position, uv] : points) {
        writeUV(text, uv);
        hasMissingUV |= uv == kNoUV;
    }
    text << "vn 0 1 0\n";
    writeCellFaces(text, points, dimensions);
    if (hasMissingUV) LOG4CXX_WARN(log, "Constructor appears to have been passed invalid UV points");
    hash = calculateHash(text.str());
    return text;
}

bool OBJScreen::generateOBJScreenFile(std::string path, const std::vector<Triangle>& triangles,
                                      const std::map<Point<double, 3>, PointData>& points) {
    std::stringstream text = classicStream();
    for (const auto& [key, point] : points) writePoint(text, "v", point.position);
    for (const auto& [key, point] : points) writeUV(text, point.uv);
    for (const auto& [key, point] : points) writePoint(text, "vn", point.normal);
    for (const Triangle& triangle : triangles) {
        text << 'f';
        for (const TriangleVertex& corner : triangle.vertices) {
            const auto found = points.find(corner.position);
            if (found == points.end()) return false;
            writeCorner(text, found->second.index);
        }
        text << '\n';
    }
    std::ofstream file(std::filesystem::path(std::move(path)));
    if (!file) return false;
    file << text.rdbuf();
    return true;
}

void OBJScreen::serialize(std::ostream& out, const MeshScreen* screen) {
    std::vector<Triangle> triangles;
    screen->getTesselation(triangles);
    for (const Triangle& triangle : triangles)
        for (const TriangleVertex& corner : triangle.vertices) writePoint(out, "v", corner.position);
    for (const Triangle& triangle : triangles)
        for (const TriangleVertex& corner : triangle.vertices) writePoint(out, "vn", corner.normal);

    const auto* const objScreen = dynamic_cast<const OBJScreen*>(screen);
    // Intended: UVs out of range are not written, and UVs of a mesh without a valid boundary are.
    const bool hasUV =
        objScreen != nullptr && (objScreen->status == StatusOk || objScreen->status == StatusBadBoundary);
    if (hasUV) {
        for (const Triangle& triangle : triangles)
            for (const TriangleVertex& corner : triangle.vertices) writeUV(out, corner.uv);
    }
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        out << 'f';
        const auto first = static_cast<std::int64_t>(3 * i + 1);
        for (std::int64_t corner = first; corner < first + 3; ++corner) {
            if (hasUV)
                writeCorner(out, corner);
            else
                out << ' ' << corner << "//" << corner;
        }
        out << '\n';
    }
}
