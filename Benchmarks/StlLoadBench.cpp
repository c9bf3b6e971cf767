// Loads of binary STL files up to a screen that is ready for queries, next to the reference
// implementation.
#include <QuarnScreen/STLScreen.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>

#include "Inputs/LoadBench.h"
#include "Reference/Timed/ReferenceIndexes.h"
#include "Reference/Timed/ReferenceScene.h"

namespace {

using quarn::bench::add;
using quarn::bench::FileForm;
using quarn::bench::fileOf;
using quarn::bench::measureLoad;
using quarn::bench::MeshCase;
using quarn::bench::MeshFile;
using quarn::bench::Order;
using quarn::bench::Shape;

class ByLibrary : public STLScreen {
public:
    void load(const MeshFile& file) { deserializeFromFile(file.widePath()); }
    [[nodiscard]] std::size_t count() const { return triangles.size(); }
};

class ByReference {
public:
    void load(const MeshFile& file) {
        std::ifstream in(file.path(), std::ios::binary);
        contents.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        in.seekg(0);
        std::string token;
        in >> token;
        in.clear();
        in.seekg(0);
        readTriangles(in);
        indexes.build(triangles);
        scene.upload(triangles);
    }
    [[nodiscard]] std::size_t count() const { return triangles.size(); }

private:
    void readTriangles(std::istream& in) {
        std::array<char, 84> header{};
        in.read(header.data(), header.size());
        std::int32_t count = 0;
        std::memcpy(&count, header.data() + 80, sizeof count);
        std::array<char, 50> record{};
        while (count-- > 0 && in.read(record.data(), record.size())) appendTriangle(record.data());
    }

    void appendTriangle(const char* record) {
        std::array<float, 12> numbers{};
        std::memcpy(numbers.data(), record, sizeof numbers);
        const auto point = [&](std::size_t i) -> Point<double, 3> {
            return {numbers[i], numbers[i + 1], numbers[i + 2]};
        };
        Triangle triangle;
        triangle.normal = point(0);
        for (std::size_t i = 0; i < 3; ++i) {
            triangle.vertices[i].position = point(3 * i + 3);
            triangle.vertices[i].normal = triangle.normal;
        }
        triangle.computeCentroids();
        if (std::abs(static_cast<double>(numbers[0] + numbers[1] + numbers[2])) < 1e-6) {
            triangle.computeGeometry();
            for (TriangleVertex& vertex : triangle.vertices) vertex.normal = triangle.normal;
        }
        triangles.push_back(triangle);
    }

    std::string contents;
    std::vector<Triangle> triangles;
    quarn::test::ReferenceIndexes indexes;
    quarn::test::ReferenceScene scene;
};

template <class Implementation>
void addImplementation(const MeshCase& mesh, const char* name) {
    add("stl-load", mesh, name, [](benchmark::State& state, const MeshCase& meshCase) {
        measureLoad<Implementation>(state, fileOf(meshCase, FileForm::Stl), meshCase.triangleCount);
    })->UseManualTime();
}

int registerAll() {
    for (const int triangleCount : {10'000, 100'000, 1'000'000}) {
        const MeshCase mesh{Shape::Dome, triangleCount, Order::InOrder};
        addImplementation<ByLibrary>(mesh, "library");
        addImplementation<ByReference>(mesh, "reference");
    }
    return 0;
}

[[maybe_unused]] const int kRegistered = registerAll();

}  // namespace
