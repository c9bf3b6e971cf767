#include "ThreadPool.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace quarn {

WorkerTeam::WorkerTeam(std::size_t mostThreads, StartThread startThread)
    : most(mostThreads), start(std::move(startThread)) {}

WorkerTeam::~WorkerTeam() {
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isEnding = true;
    }
    partsAreThere.notify_all();
    for (std::thread& thread : threads) thread.join();
}

void WorkerTeam::startThreads() {
    if (std::exchange(haveThreadsStarted, true)) return;
    threads.reserve(most - 1);
    try {
        while (threadCount() < most) threads.push_back(start([this] { waitForParts(); }));
    } catch (const std::system_error&) {
        // The system has no more threads; the work goes on with those that are there.
    }
}

void WorkerTeam::run(std::size_t count, const std::function<void(std::size_t)>& part) {
    if (count > 1) startThreads();
    std::unique_lock<std::mutex> lock(mutex);
    task = &part;
    partCount = count;
    nextPart = 0;
    endedParts = 0;
    for (std::size_t i = 1; i < std::min(count, threadCount()); ++i) partsAreThere.notify_one();
    workOnParts(lock);
    allHaveEnded.wait(lock, [this] { return endedParts == partCount; });
    if (firstError) std::rethrow_exception(std::exchange(firstError, nullptr));
}

void WorkerTeam::waitForParts() {
    std::unique_lock<std::mutex> lock(mutex);
    for (;;) {
        partsAreThere.wait(lock, [this] { return isEnding || nextPart < partCount; });
        if (isEnding) return;
        workOnParts(lock);
    }
}

void WorkerTeam::workOnParts(std::unique_lock<std::mutex>& lock) {
    while (nextPart < partCount) {
        const std::size_t number = nextPart++;
        const std::function<void(std::size_t)>& part = *task;
        lock.unlock();
        std::exception_ptr error;
        try {
            part(number);
        } catch (...) {
            error = std::current_exception();
        }
        lock.lock();
        if (error && (!firstError || number < firstErrorPart)) {
            firstError = error;
            firstErrorPart = number;
        }
        if (++endedParts == partCount) allHaveEnded.notify_one();
    }
}

}  // namespace quarn
