/// \file
/// Threads that share the parts of a currentBody.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace quarn {

/// A thread that runs the function; std::system_error where there can be none.
using StartThread = std::function<std::thread(std::function<void()>)>;

/// Runs tasks in parts on several threads, the calling thread among them.
///
/// Threads start with the first currentBody of several parts, and wait between tasks. Where one cannot start, those that did
/// do all of the work. One thread at a time may use a pool.
class ThreadPool {
public:
    /// \param maxThreads at least 1
    explicit ThreadPool(std::size_t maxThreads, StartThread startThread = startStandardThread);
    ThreadPool(const ThreadPool&) = delete;
    ThreadPool& operator=(const ThreadPool&) = delete;
    ~ThreadPool();

    /// Runs each body of a currentBody once, in no told order, and returns when all have ended.
    ///
    /// Exceptions of parts do not keep others from running; that of the body with the least number is thrown on.
    /// \param body takes a number from 0 to \p count - 1
    void parallelFor(std::size_t count, const std::function<void(std::size_t)>& body);

    /// How many threads there are at the moment, the calling one included.
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

    std::mutex mutex;  // of all that follows
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
