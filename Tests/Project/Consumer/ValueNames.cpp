// A caller's use of the settled names of values, text, tree and map, with the types that the calls
// must have.
#include <array>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <QuarnScreen/QuarnScreen.h>

#include "Names.h"

namespace {

using P2 = Point<double, 2>;
using P3 = Point<double, 3>;

static_assert(std::is_same_v<P3, Point<double, 3, std::make_integer_sequence<std::uint64_t, 3>>>);
static_assert(kNoUV[0] == -999.0 && kNoUV[1] == -999.0);
static_assert(!std::is_base_of_v<std::exception, ZelmoreExceptionBase>);

bool valuesHold() {
    P3 p(1.0, 2.0, 2.0);
    p[0] = 1.0;
    const P3 sum = (p + p - p) * 2.0 + 2.0 * p / 2.0;
    const bool pointsHold = dot(p, p) == 9.0 && length(p) == 3.0 && normalized(p)[1] == 2.0 / 3.0 &&
                            cross(P3(1, 0, 0), P3(0, 1, 0)) == P3(0, 0, 1) && sum != p && p < sum;
    const Ray ray{P3(0, -1, 0), P3(0, 1, 0)};
    Triangle triangle;
    triangle.vertices[1].position = P3(1, 0, 0);
    triangle.vertices[2].position = P3(0, 0, 1);
    triangle.vertices[0] = TriangleVertex::midpoint(triangle.vertices[0], triangle.vertices[0]);
    triangle.computeGeometry();
    triangle.computeCentroids();
    double t = 0.0;
    double a = 0.0;
    double b = 0.0;
    P3 hit;
    const bool triangleHolds =
        intersectTrianglePlane(ray.origin, ray.target, triangle, t, hit, a, b, false) &&
        triangle.barycentric(hit, a, b, false) && triangle.pointAt(a, b) == hit &&
        triangle.uvAt(a, b) == kNoUV;
    P3 onA;
    P3 onB;
    const bool linesHold = closestPointsBetweenLines(P3(), P3(1, 0, 0), ray.origin, ray.target, onA, onB) &&
                           closestPointsBetweenLines(P3(), P3(1, 0, 0), ray.origin, ray.target, onA, onB,
                                                     true, true, true, true);
    Matrix<float, 4> m = Matrix<float, 4>::identity();
    m(0, 3) = 5.0F;
    Matrix<float, 4> inverse;
    const bool matrixHolds = m.inverse(inverse) && m * inverse == Matrix<float, 4>::identity() &&
                             m.transformPoint(1.0F, 2.0F, 3.0F) == Point<float, 3>(6.0F, 2.0F, 3.0F);
    Intersection record;
    record.point = p;
    record.hasUV = true;
    record.uv = kNoUV;
    record.triangleIndex = 7;
    record.normalSign = 1;
    IntersectionSet hits(record);
    hits.add(Intersection());
    hits.sort(P3(), P3());
    const bool hitsHold = hits.count() == 2 && hits.last().triangleIndex == 7 && !hits.empty() &&
                          hits.get(1).uv == kNoUV && hits.begin() + 2 == hits.end();
    return pointsHold && triangleHolds && linesHold && matrixHolds && hitsHold;
}

bool textHolds() {
    const unsigned char bytes[] = {'f', 'o', 'o'};
    std::wostringstream out;
    XmlHelper::writeIndented(0, out, L"");
    XmlHelper::writeTag(0, out, L"a", XmlHelper::format(L"%d%s", 1, std::wstring(L"x")));
    XmlHelper::writeTagPoint(0, out, L"p", P3());
    using Helper = ScreenGeometryXmlHelper;
    Helper::serializeOpenTag(out, 0, "t", true);
    Helper::serializeCloseTag(out, 0, true);
    Helper::serializeOpenTagHasChildren(out, 0, "t");
    Helper::serializeCloseTagHasChildren(out, 0);
    Helper::serializeOpenTagNoChildren(out, 0, "t");
    Helper::serializeCloseTagNoChildren(out, 0);
    Helper::serializeAndBase64EncodeScreenGeometry(out, 0, "t", "foo");
    return toUtf8(fromUtf8("foo")) == "foo" && encodeBase64(bytes, 3) == "Zm9v" &&
           decodeBase64("Zm9v") == "foo" && decodeBase64Wide(encodeBase64Wide(L"foo", 3)) == L"foo" &&
           out.str().find(L"<a>1x</a>\n") == 0 && Helper::rootNodeName() == L"ScreenGeometry" &&
           Helper::classTypeNodeName() == L"ClassType" && !Helper::makeParseExceptionMsg(L"t").empty();
}

bool readersHold(xercesc::DOMNode* node) {
    return XmlHelper::readDouble(node, L"") == 0.0 && XmlHelper::readPoint(node, L"") == P3() &&
           ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(node).empty();
}

struct Axis {
    double operator()(const Triangle* const& triangle, int axis) const {
        return triangle->centroid[static_cast<std::size_t>(axis)];
    }
};

bool indexesHold() {
    std::vector<Triangle> triangles(2);
    triangles[0].vertices[1].uv = triangles[0].vertices[2].uv = P2(1, 0);
    triangles[0].vertices[0].uv = P2(0, 0);
    triangles[0].vertices[2].uv = P2(0, 1);
    for (Triangle& triangle : triangles) triangle.computeGeometry();
    triangles[1].centroid = P3(5, 0, 0);
    const std::array<const Triangle*, 2> values{&triangles[0], &triangles[1]};
    PointKDTree<const Triangle*, 3, Axis> tree;
    tree.build(values.begin(), values.end());
    PointKDTree<const Triangle*, 3, Axis>::NearestIterator walk(tree, P3(4, 0, 0));
    const bool walks = !walk.done() && walk.value() == values[1];
    walk.advance();
    const bool treeHolds =
        walks && tree.depth() == 1 && tree.findNearest(P3()) == values[0] &&
        tree.findNearestIf(P3(), [](const Triangle* const&) { return false; }) == nullptr &&
        tree.findKNearest(P3(), 2).size() == 2;
    RegionMap map;
    map.rebuild(triangles.data(), triangles.data() + 1);
    std::optional<const Triangle*> found;
    map.locate(static_cast<int>(map.nodes().size()) - 1, map.rootRect(), 0.25, 0.25, found);
    const RegionRect rect{0.0, 1.0, 0.0, 1.0};
    const RegionNode& root = map.nodes().back();
    const int sums = map.triangleCount() + map.failedSplits() + map.maxDepth() + map.minDepth() +
                     map.maxLeafSize() + map.minLeafSize() + map.leafTriangleTotal() + map.leafCount() +
                     map.innerCount() + map.emptyLeafCount();
    return treeHolds && found == values[0] && root.count() == 1 && root.triangle(0) == values[0] &&
           sums == 7 && map.rootRect().maxU == rect.maxU && map.rootRect().minU == rect.minU &&
           map.rootRect().minV == rect.minV && map.rootRect().maxV == rect.maxV &&
           std::is_same_v<decltype(root.child(0)), int>;
}

}  // namespace

std::vector<std::string> valueNamesThatFail(xercesc::DOMNode* nodeWithChild) {
    std::vector<std::string> failed;
    const auto expect = [&failed](bool holds, const char* what) {
        if (!holds) failed.emplace_back(what);
    };
    expect(valuesHold(), "value types");
    expect(textHolds(), "text and XML writers");
    expect(readersHold(nodeWithChild), "XML readers");
    expect(indexesHold(), "tree and map");
    return failed;
}
