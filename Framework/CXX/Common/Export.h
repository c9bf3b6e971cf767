/// \file
/// Visibility of symbols.
#pragma once

/// Marks everything that callers may link against. All other symbols are hidden.
#define QUARNSCREEN_EXPORT __attribute__((visibility("default")))
