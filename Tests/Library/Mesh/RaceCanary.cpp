// A program with a race, which the thread sanitizer must report: if it does not, its silence
// elsewhere means nothing. The race stands among calls of the ray tracer, as a suppression of the
// tracer's own must not hide it.
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"
#include "Support/RunTogether.h"

int main() {
    const quarn::test::TriangleScreen screen(quarn::test::flatGrid({4, 4}));
    int hits = 0;
    quarn::test::runTogether(2, [&](int) {
        for (int i = 0; i < 100; ++i) hits += screen.intersect({0.1, -1.0, 0.2}, {0.1, 1.0, 0.2}).count();
    });
    return hits > 0 ? 0 : 1;
}
