/// \file
/// A mesh screen that the benchmarks fill themselves.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <QuarnScreen/MeshScreen.h>

namespace quarn::bench {

/// The least concrete mesh screen. It opens to the benchmarks what the class keeps for its derived
/// classes.
class BenchScreen : public MeshScreen {
public:
    using ScreenGeometry::calculateHash;
    using ScreenGeometry::log;

    BenchScreen() = default;

    /// Takes a mesh and leaves everything else as it is.
    void take(std::vector<Triangle> mesh) { triangles = std::move(mesh); }
    [[nodiscard]] const std::vector<Triangle>& mesh() const { return triangles; }

    using MeshScreen::addScreenToScene;
    using MeshScreen::initTriangleData;

    void serialize(std::wostream& /*out*/, int /*indent*/) override {}
    void deserialize(xercesc::DOMNode* /*node*/) override {}
    void updateGeometry(IScreenConfig* /*config*/) override {}
    [[nodiscard]] bool hasParameterization() const override { return true; }
    [[nodiscard]] const std::string& getType() const override {
        static const std::string name = "class BenchScreen";
        return name;
    }
};

/// The tracer is opened once for all, by a screen that stays.
inline void keepTracerOpen() {
    static const BenchScreen screen;
}

}  // namespace quarn::bench
