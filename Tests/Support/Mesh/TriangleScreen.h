/// \file
/// A mesh screen that a test fills itself.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <QuarnScreen/MeshScreen.h>

#include "Support/GeometryBits.h"

namespace quarn::test {

/// The least concrete mesh screen: it has no file format, and shows what the class keeps for its
/// derived classes.
class TriangleScreen : public MeshScreen {
public:
    bool parameterized = true;

    TriangleScreen() = default;
    explicit TriangleScreen(std::vector<Triangle> mesh) { load(std::move(mesh)); }

    /// Replaces the mesh and builds everything.
    void load(std::vector<Triangle> mesh) {
        triangles = std::move(mesh);
        addScreenToScene();
    }
    /// Replaces the mesh and builds all but the ray tracer's scene.
    void reindex(std::vector<Triangle> mesh) {
        triangles = std::move(mesh);
        initTriangleData();
    }
    [[nodiscard]] std::vector<Triangle>& mesh() { return triangles; }
    [[nodiscard]] const std::vector<Triangle>& mesh() const { return triangles; }
    [[nodiscard]] const Boundary& outline() const { return boundary; }
    [[nodiscard]] Boundary& outline() { return boundary; }

    using MeshScreen::addScreenToScene;
    using MeshScreen::calculateGrid;
    using MeshScreen::initTriangleData;
    using MeshScreen::pointWithinBoundary;

    void serialize(std::wostream& /*out*/, int /*indent*/) override {}
    void deserialize(xercesc::DOMNode* /*node*/) override {}
    void updateGeometry(IScreenConfig* /*config*/) override {}
    [[nodiscard]] bool hasParameterization() const override { return parameterized; }
    [[nodiscard]] const std::string& getType() const override {
        static const std::string name = "class TriangleScreen";
        return name;
    }
};

}  // namespace quarn::test
