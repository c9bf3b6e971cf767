#include "Library/Stl/StlFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <sstream>

namespace quarn::test {
namespace {

template <class T>
void appendBytes(std::string& bytes, const T& value) {
    std::array<char, sizeof(T)> raw;
    std::memcpy(raw.data(), &value, sizeof(T));
    bytes.append(raw.data(), raw.size());
}

}  // namespace

Facet facetWithNormal(float x, float y, float z) {
    return {{x, y, z, 0.0F, 0.0F, 0.0F, 2.0F, 0.0F, 0.0F, 0.0F, 2.0F, 0.0F}};
}

std::vector<Facet> rowOfFacets(int count) {
    std::vector<Facet> facets;
    for (int i = 0; i < count; ++i) {
        Facet facet = facetWithNormal(0.0F, 0.0F, 0.0F);
        for (const std::size_t x : {3U, 6U, 9U}) facet.numbers[x] += 2.0F * static_cast<float>(i);
        facets.push_back(facet);
    }
    return facets;
}

std::string binaryStl(const std::string& header, std::int32_t count, const std::vector<Facet>& facets) {
    std::string bytes = header;
    bytes.resize(80);
    appendBytes(bytes, count);
    for (const Facet& facet : facets) {
        appendBytes(bytes, facet.numbers);
        appendBytes(bytes, facet.attribute);
    }
    return bytes;
}

std::string binaryStl(const std::vector<Facet>& facets) {
    return binaryStl("bin ", static_cast<std::int32_t>(facets.size()), facets);
}

Triangle triangleOf(const Facet& facet) {
    const auto at = [&](std::size_t i) { return static_cast<double>(facet.numbers[i]); };
    Triangle triangle;
    triangle.normal = {at(0), at(1), at(2)};
    for (std::size_t i = 0; i < 3; ++i) {
        triangle.vertices[i].position = {at(3 * i + 3), at(3 * i + 4), at(3 * i + 5)};
        triangle.vertices[i].normal = triangle.normal;
        triangle.vertices[i].uv = kNoUV;
    }
    triangle.computeCentroids();
    float sum = facet.numbers[0];
    sum += facet.numbers[1];
    sum += facet.numbers[2];
    if (std::fabs(static_cast<double>(sum)) < 1e-6) {
        triangle.computeGeometry();
        for (std::size_t i = 0; i < 3; ++i) triangle.vertices[i].normal = triangle.normal;
    }
    return triangle;
}

std::vector<Triangle> trianglesOf(const std::vector<Facet>& facets, std::size_t count) {
    std::vector<Triangle> triangles;
    for (std::size_t i = 0; i < count; ++i) triangles.push_back(triangleOf(facets[i]));
    return triangles;
}

std::string messagesOf(STLScreen& screen, std::istream& in) {
    ::testing::internal::CaptureStderr();
    screen.deserialize(in);
    return ::testing::internal::GetCapturedStderr();
}

std::string messagesOf(STLScreen& screen, const std::string& bytes) {
    std::istringstream in(bytes);
    return messagesOf(screen, in);
}

std::string gotWhileExpecting(const std::string& token, const std::string& expected) {
    return "Error: got \"" + token + "\" while expecting " + expected + "\n";
}

}  // namespace quarn::test
