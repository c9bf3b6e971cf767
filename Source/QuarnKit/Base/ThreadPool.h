/// \file
/// Threads that share the tasks of a loop.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace quarn {

/// Starts a thread that runs a function. Throws std::system_error if the system has no more
/// threads.
using StartThread = std::function<std::thread(std::function<void()>)>;

/// Runs loops in parallel on several threads, including the calling thread.
///
/// Threads start with the first loop of several tasks, and wait between loops. If a thread cannot
/// start, the others do all of the work. One thread at a time may use a pool.
class ThreadPool {
public:
    /// \param maxThreads maximum number of threads, including the calling one
    /// \pre maxThreads >= 1
    explicit ThreadPool(std::size_t maxThreads, StartThread startThread = startStandardThread);
    ThreadPool(const ThreadPool&) = delete;
    ThreadPool& operator=(const ThreadPool&) = delete;
    ~ThreadPool();

    /// Calls body(0) to body(count - 1) once each, in unspecified order, and waits for all. If
    /// tasks throw, the others still run, and the exception of the lowest-numbered one is rethrown.
    void parallelFor(std::size_t count, const std::function<void(std::size_t)>& body);

    /// Returns the number of threads at the moment, including the calling one.
    [[nodiscard]] std::size_t threadCount() const { return threads.size() + 1; }

private:
    static std::thread startStandardThread(std::function<void()> function) {
        return std::thread(std::move(function));
    }
    void startThreads();
    void runWorker();
    void runTasks(std::unique_lock<std::mutex>& lock);

    std::size_t maxThreadCount;
    StartThread start;
    bool haveThreadsStarted = false;
    std::vector<std::thread> threads;

    std::mutex mutex;  // guards the members below
    std::condition_variable tasksAvailable;
    std::condition_variable allFinished;
    const std::function<void(std::size_t)>* currentBody = nullptr;
    std::size_t taskCount = 0;
    std::size_t nextTask = 0;
    std::size_t finishedTasks = 0;
    std::exception_ptr firstError;
    std::size_t firstErrorTask = 0;
    bool isStopping = false;
};

}  // namespace quarn
