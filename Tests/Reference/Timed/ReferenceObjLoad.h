/// \file
/// The load of an OBJ text, for comparison of times: byte after byte, on two threads, into lists
/// that grow. Unlike ReferenceObjReader it checks no index of a byte, and copies each text once.
#pragma once

#include <array>
#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include <QuarnScreen/ScreenGeometry.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::test {

/// What comes of a text, before any index.
struct ReferenceObjLoad {
    /// Loads a text whose references are all good.
    void load(std::istream& in);

    std::string text;
    std::array<unsigned char, 20> digest{};
    std::vector<Triangle> triangles;
};

}  // namespace quarn::test
