/// \file
/// STL files for tests, and a screen that shows what it made of them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <QuarnScreen/STLScreen.h>

#include "Support/Mesh/TriangleBits.h"

namespace quarn::test {

/// One record of a binary file: normal and corners, then the attribute word.
struct Facet {
    std::array<float, 12> numbers{};
    std::uint16_t attribute = 0;
};

/// A right triangle in the plane z = 0 with legs of 2, seen from +Z, with the given normal.
Facet facetWithNormal(float x, float y, float z);

/// Such triangles in a row along X, without a normal.
std::vector<Facet> rowOfFacets(int count);

/// A binary file. The header is filled with zero bytes, or cut, to 80.
std::string binaryStl(const std::string& header, std::int32_t count, const std::vector<Facet>& facets);
/// A consistent binary file.
std::string binaryStl(const std::vector<Facet>& facets);

/// The triangle of a facet's bytes.
Triangle triangleOf(const Facet& facet);
/// The triangles of the first \p count facets.
std::vector<Triangle> trianglesOf(const std::vector<Facet>& facets, std::size_t count);

class OpenStlScreen : public STLScreen {
public:
    using MeshScreen::boundary;
    using MeshScreen::triangles;
};

/// Loads bytes, or the rest of a stream, and returns what came out on the standard error stream.
std::string messagesOf(STLScreen& screen, std::istream& in);
std::string messagesOf(STLScreen& screen, const std::string& bytes);

/// The message about a token that does not stand where it should.
std::string gotWhileExpecting(const std::string& token, const std::string& expected);

inline constexpr const char* kFacetExpected = R"("facet" or "endsolid")";
inline constexpr const char* kSolidExpected = R"("solid")";

/// SHA-1 of the empty text.
inline constexpr const char* kEmptyDigest = "da39a3ee5e6b4b0d3255bfef95601890afd80709";
inline constexpr const char* kZeroDigest = "0000000000000000000000000000000000000000";

}  // namespace quarn::test
