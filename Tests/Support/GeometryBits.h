/// \file
/// Comparison of hits and of lists of points bit for bit.
#pragma once

#include <map>
#include <vector>

#include <QuarnScreen/IntersectionSet.h>

#include "Support/Bits.h"

namespace quarn::test {

using Point2 = Point<double, 2>;
using Point3 = Point<double, 3>;

inline ::testing::AssertionResult sameBits(const Intersection& a, const Intersection& b) {
    if (auto result = sameBits(a.point, b.point); !result) return result << " of the position";
    if (auto result = sameBits(a.uv, b.uv); !result) return result << " of the UV";
    if (a.hasUV == b.hasUV && a.triangleIndex == b.triangleIndex && a.normalSign == b.normalSign)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "hasUV " << a.hasUV << " and " << b.hasUV << ", triangleIndex " << a.triangleIndex << " and "
           << b.triangleIndex << ", normalSign " << a.normalSign << " and " << b.normalSign;
}

template <class T>
::testing::AssertionResult sameBits(const std::vector<T>& a, const std::vector<T>& b) {
    if (a.size() != b.size())
        return ::testing::AssertionFailure() << "sizes " << a.size() << " and " << b.size();
    for (std::size_t i = 0; i < a.size(); ++i)
        if (auto result = sameBits(a[i], b[i]); !result) return result << " of element " << i;
    return ::testing::AssertionSuccess();
}

inline ::testing::AssertionResult sameBits(const IntersectionSet& a, const IntersectionSet& b) {
    return sameBits(std::vector<Intersection>(a.begin(), a.end()),
                    std::vector<Intersection>(b.begin(), b.end()));
}

inline ::testing::AssertionResult sameBits(const std::map<Point<int, 2>, Point3>& a,
                                           const std::map<Point<int, 2>, Point3>& b) {
    if (a.size() != b.size())
        return ::testing::AssertionFailure() << "sizes " << a.size() << " and " << b.size();
    for (auto i = a.begin(), j = b.begin(); i != a.end(); ++i, ++j) {
        if (i->first != j->first) return ::testing::AssertionFailure() << "keys differ";
        if (auto result = sameBits(i->second, j->second); !result)
            return result << " under (" << i->first[0] << ", " << i->first[1] << ")";
    }
    return ::testing::AssertionSuccess();
}

}  // namespace quarn::test
