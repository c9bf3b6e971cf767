#include "ThreadPool.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include <Common/Detail/Assert.h>

namespace quarn {

ThreadPool::ThreadPool(std::size_t maxThreads, StartThread startThread)
    : maxThreadCount(maxThreads), start(std::move(startThread)) {
    QUARN_ASSERT(maxThreadCount >= 1);
}

ThreadPool::~ThreadPool() {
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isStopping = true;
    }
    tasksAvailable.notify_all();
    for (std::thread& thread : threads) thread.join();
}

void ThreadPool::startThreads() {
    if (std::exchange(haveThreadsStarted, true)) return;
    threads.reserve(maxThreadCount - 1);
    try {
        while (threadCount() < maxThreadCount) threads.push_back(start([this] { runWorker(); }));
    } catch (const std::system_error&) {
        // The system has no more threads; continue with those that started.
    }
}

void ThreadPool::parallelFor(std::size_t count, const std::function<void(std::size_t)>& body) {
    if (count > 1) startThreads();
    std::unique_lock<std::mutex> lock(mutex);
    currentBody = &body;
    taskCount = count;
    nextTask = 0;
    finishedTasks = 0;
    for (std::size_t i = 1; i < std::min(count, threadCount()); ++i) tasksAvailable.notify_one();
    runTasks(lock);
    allFinished.wait(lock, [this] { return finishedTasks == taskCount; });
    if (firstError) std::rethrow_exception(std::exchange(firstError, nullptr));
}

void ThreadPool::runWorker() {
    std::unique_lock<std::mutex> lock(mutex);
    for (;;) {
        tasksAvailable.wait(lock, [this] { return isStopping || nextTask < taskCount; });
        if (isStopping) return;
        runTasks(lock);
    }
}

void ThreadPool::runTasks(std::unique_lock<std::mutex>& lock) {
    while (nextTask < taskCount) {
        const std::size_t number = nextTask++;
        const std::function<void(std::size_t)>& body = *currentBody;
        lock.unlock();
        std::exception_ptr error;
        try {
            body(number);
        } catch (...) {
            error = std::current_exception();
        }
        lock.lock();
        if (error && (!firstError || number < firstErrorTask)) {
            firstError = error;
            firstErrorTask = number;
        }
        if (++finishedTasks == taskCount) allFinished.notify_one();
    }
}

}  // namespace quarn
