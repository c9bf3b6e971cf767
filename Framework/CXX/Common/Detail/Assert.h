/// \file
/// Assertions of preconditions.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace quarn::detail {

/// Prints the location and the condition to the standard error stream and aborts.
[[noreturn]] inline void failAssertion(const char* condition, const char* file, int line) {
    std::fprintf(stderr, "%s:%d: assertion failed: %s\n", file, line, condition);
    std::abort();
}

}  // namespace quarn::detail

/// Aborts if a precondition is false, in builds that define QUARN_ASSERTIONS. A false precondition
/// is a programming error, not bad input.
///
/// Other builds compile the condition but do not evaluate it.
#if defined(QUARN_ASSERTIONS)
#define QUARN_ASSERT(condition) \
    ((condition) ? static_cast<void>(0) : quarn::detail::failAssertion(#condition, __FILE__, __LINE__))
#else
#define QUARN_ASSERT(condition) static_cast<void>(sizeof((condition) ? 1 : 0))
#endif
