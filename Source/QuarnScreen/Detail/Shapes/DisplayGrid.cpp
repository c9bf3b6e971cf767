#include "DisplayGrid.h"

namespace quarn::detail {

void appendDisplayGridIndices(std::vector<int>& indices) {
    for (int r = 1; r < kDisplayGridSize; ++r) {
        for (int c = 0; c + 1 < kDisplayGridSize; ++c) {
            const int above = (r - 1) * kDisplayGridSize + c;
            const int below = r * kDisplayGridSize + c;
            indices.insert(indices.end(), {above, below, below + 1, above, below + 1, above + 1});
        }
    }
}

}  // namespace quarn::detail
