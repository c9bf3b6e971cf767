/// \file
/// Counts how often a program takes memory.
#pragma once

namespace quarn::test {

/// Calls of `operator new` since the program began. Where AllocationCount.cpp is linked, it replaces that.
int allocationCount();

}  // namespace quarn::test
