/// \file
/// The mark of everything that callers may link against; all other symbols stay hidden.
#pragma once

#define QUARNSCREEN_EXPORT __attribute__((visibility("default")))
