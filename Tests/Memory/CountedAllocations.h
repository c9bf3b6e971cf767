/// \file
/// The count of heap allocations; a program that links it has every `new` counted.
#pragma once

namespace quarn::test {

/// How often this program has allocated memory by `new` so far.
[[nodiscard]] long allocationCount();

}  // namespace quarn::test
