/// \file
/// Times of work that libraries would spread over threads.
#pragma once

#include <sched.h>

#include <ctime>

namespace quarn::bench {

/// Keeps the process on the processor where it runs. To be called before threads are started: the
/// ray tracer starts as many as it finds processors.
inline int stayOnOneCpu() {
    cpu_set_t cpus;
    CPU_ZERO(&cpus);
    CPU_SET(static_cast<std::size_t>(sched_getcpu()), &cpus);
    return sched_setaffinity(0, sizeof(cpus), &cpus);
}

/// Seconds that the processor worked for this process, on all of its threads.
inline double processSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

}  // namespace quarn::bench
