/// \file
/// The load of an OBJ text written plainly: byte after byte, on two threads, with the lists of triangles growing as they come.
#pragma once

#include <array>
#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include <QuarnScreen/ScreenGeometry.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::bench {

/// What comes of a text, before any index.
struct PlainObjLoad {
    /// Loads a text whose references are all good.
    void load(std::istream& in);

    std::string text;
    std::array<unsigned char, 20> digest{};
    std::vector<Triangle> triangles;
};

}  // namespace quarn::bench
