// Part of test programs under the thread sanitizer alone: keeps them on one processor. The ray
// tracer's scheduler then starts no threads of its own, on which the sanitizer cannot distinguish
// the tracer's calls into the C++ library from ours. Races are found nevertheless: they follow from
// the order of locks and not from what happens at one time.
#include <sched.h>

namespace {

bool stayOnThisProcessor() {
    const int processor = sched_getcpu();
    if (processor < 0) return false;
    cpu_set_t processors;
    CPU_ZERO(&processors);
    CPU_SET(static_cast<unsigned int>(processor), &processors);
    return sched_setaffinity(0, sizeof(processors), &processors) == 0;
}

[[maybe_unused]] const bool isOnOneProcessor = stayOnThisProcessor();

}  // namespace
