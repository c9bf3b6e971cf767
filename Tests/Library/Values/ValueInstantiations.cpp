// Every template of the value types with the arguments in use: each compiler has to accept all of
// their bodies.
#include <QuarnScreen/Intersection.h>
#include <QuarnScreen/IntersectionSet.h>
#include <QuarnScreen/Lines.h>
#include <QuarnScreen/Matrix.h>
#include <QuarnScreen/Point.h>
#include <QuarnScreen/Ray.h>
#include <QuarnScreen/Triangle.h>

// Every template of the value types with the arguments in use: each compiler has to accept all of
// their bodies.
template class Point<double, 3>;
template class Point<double, 2>;
template class Point<float, 3>;
template class Point<int, 2>;
template class Matrix<float, 4>;

template double dot(const Point<double, 3>&, const Point<double, 3>&);
template double dot(const Point<double, 2>&, const Point<double, 2>&);
template Point<double, 3> cross(const Point<double, 3>&, const Point<double, 3>&);
template double length(const Point<double, 3>&);
template double length(const Point<double, 2>&);
template Point<double, 3> normalized(const Point<double, 3>&);
template Point<double, 2> normalized(const Point<double, 2>&);

// The operators are friends of the class: they are found through their arguments alone.
static_assert(2.0 * Point<double, 2>(1.0, 2.0) + Point<double, 2>(1.0, 2.0) * 2 - kNoUV / 1.0 ==
              Point<double, 2>(1003.0, 1007.0));
static_assert(Matrix<float, 4>::identity() * Matrix<float, 4>::identity() == Matrix<float, 4>::identity());
