// Loads of OBJ files: up to the triangles next to another library's parse, and up to a screen that
// is ready for queries next to the reference implementation.
#include <QuarnScreen/OBJScreen.h>

#include <fstream>

#include "Inputs/LoadBench.h"
#include "Measuring/ResidentMemory.h"
#include "Reference/Timed/ReferenceIndexes.h"
#include "Reference/Timed/ReferenceObjLoad.h"
#include "Reference/Timed/ReferenceScene.h"
#include "Rivals/TinyObj.h"

namespace {

using quarn::bench::add;
using quarn::bench::BenchScreen;
using quarn::bench::FileForm;
using quarn::bench::fileOf;
using quarn::bench::keepTracerOpen;
using quarn::bench::measureLoad;
using quarn::bench::MeshCase;
using quarn::bench::MeshFile;
using quarn::bench::Order;
using quarn::bench::Shape;

// An implementation that loads a file. The constructor does not count, nor does the destructor.
class ByLibrary : public OBJScreen {
public:
    void load(const MeshFile& file) { deserializeFromFile(file.widePath()); }
    [[nodiscard]] std::size_t count() const { return triangles.size(); }
};

class TrianglesByLibrary : public ByLibrary {
public:
    void load(const MeshFile& file) {
        try {
            ByLibrary::load(file);
        } catch (const ObjLoadException&) {
            // The last triangle of the file, as intended.
        }
    }
};

struct ByReference {
    void load(const MeshFile& file) {
        std::ifstream in(file.path());
        loaded.load(in);
        indexes.build(loaded.triangles);
        scene.upload(loaded.triangles);
    }
    [[nodiscard]] std::size_t count() const { return loaded.triangles.size(); }

    quarn::test::ReferenceObjLoad loaded;
    quarn::test::ReferenceIndexes indexes;
    quarn::test::ReferenceScene scene;
};

struct ByTinyObj {
    void load(const MeshFile& file) { triangleCount = quarn::bench::parseByTinyObj(file.path()); }
    [[nodiscard]] std::size_t count() const { return triangleCount; }

    std::size_t triangleCount = 0;
};

// The memory of a screen's indexes, without its triangles and the ray tracer.
double indexBytes(const OBJScreen& loaded) {
    std::vector<Triangle> triangles;
    loaded.getTesselation(triangles);
    BenchScreen screen;
    screen.take(std::move(triangles));
    const double before = quarn::bench::residentBytes();
    screen.initTriangleData();
    return quarn::bench::residentBytes() - before;
}

// The peak is that of the process, and what stays is what it has more than before.
void measureMemory(benchmark::State& state, const MeshCase& mesh, FileForm form) {
    keepTracerOpen();
    const MeshFile& file = fileOf(mesh, form);
    const auto textSize = static_cast<double>(file.size());
    const auto perTriangle = [&](double bytes) { return bytes / mesh.triangleCount; };
    for ([[maybe_unused]] auto _ : state) {
        const double before = quarn::bench::residentBytes();
        if (!quarn::bench::forgetPeak()) {
            state.SkipWithError("the system does not reset the peak");
            return;
        }
        ByLibrary screen;
        screen.load(file);
        const double peak = quarn::bench::peakBytes();
        const double after = quarn::bench::residentBytes();
        state.counters["temporary_bytes_per_text_byte"] = (peak - after) / textSize;
        state.counters["bytes_per_triangle"] = perTriangle(after - before);
        state.counters["text_bytes_per_triangle"] = perTriangle(textSize);
        state.counters["list_bytes_per_triangle"] = sizeof(Triangle);
        state.counters["index_bytes_per_triangle"] = perTriangle(indexBytes(screen));
    }
}

template <class Implementation>
void addImplementation(const char* subject, const MeshCase& mesh, const std::string& implementation,
                       FileForm form, int more = 0) {
    add(subject, mesh, implementation, [=](benchmark::State& state, const MeshCase& meshCase) {
        measureLoad<Implementation>(state, fileOf(meshCase, form), meshCase.triangleCount + more);
    })->UseManualTime();
}

void addAll(const MeshCase& mesh, const std::string& variant, FileForm form, FileForm refused) {
    addImplementation<TrianglesByLibrary>("obj-triangles", mesh, variant + "/library", refused);
    addImplementation<ByTinyObj>("obj-triangles", mesh, variant + "/tinyobj", refused, 1);
    addImplementation<ByLibrary>("obj-load", mesh, variant + "/library", form);
    addImplementation<ByReference>("obj-load", mesh, variant + "/reference", form);
    addImplementation<ByTinyObj>("obj-load", mesh, variant + "/tinyobj", form);
    add("obj-memory", mesh, variant + "/library", [=](benchmark::State& state, const MeshCase& meshCase) {
        measureMemory(state, meshCase, form);
    })->Iterations(1);
}

int registerAll() {
    for (const int triangleCount : {10'000, 100'000, 1'000'000}) {
        const MeshCase mesh{Shape::Dome, triangleCount, Order::InOrder};
        addAll(mesh, "shared", FileForm::SharedObj, FileForm::RefusedObj);
        addAll(mesh, "unshared", FileForm::UnsharedObj, FileForm::UnsharedRefusedObj);
    }
    return 0;
}

[[maybe_unused]] const int kRegistered = registerAll();

}  // namespace
