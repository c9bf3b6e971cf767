/// \file
/// Threads that share the parts of a task.
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
/// Threads start with the first task of several parts, and wait between tasks. Where one cannot start, those that did
/// do all of the work. One thread at a time may use a team.
class WorkerTeam {
public:
    /// \param mostThreads at least 1
    explicit WorkerTeam(std::size_t mostThreads, StartThread startThread = startStandardThread);
    WorkerTeam(const WorkerTeam&) = delete;
    WorkerTeam& operator=(const WorkerTeam&) = delete;
    ~WorkerTeam();

    /// Runs each part of a task once, in no told order, and returns when all have ended.
    ///
    /// Exceptions of parts do not keep others from running; that of the part with the least number is thrown on.
    /// \param part takes a number from 0 to \p count - 1
    void run(std::size_t count, const std::function<void(std::size_t)>& part);

    /// How many threads there are at the moment, the calling one included.
    [[nodiscard]] std::size_t threadCount() const { return threads.size() + 1; }

private:
    static std::thread startStandardThread(std::function<void()> function) {
        return std::thread(std::move(function));
    }
    void startThreads();
    void waitForParts();
    void workOnParts(std::unique_lock<std::mutex>& lock);

    std::size_t most;
    StartThread start;
    bool haveThreadsStarted = false;
    std::vector<std::thread> threads;

    std::mutex mutex;  // of all that follows
    std::condition_variable partsAreThere;
    std::condition_variable allHaveEnded;
    const std::function<void(std::size_t)>* task = nullptr;
    std::size_t partCount = 0;
    std::size_t nextPart = 0;
    std::size_t endedParts = 0;
    std::exception_ptr firstError;
    std::size_t firstErrorPart = 0;
    bool isEnding = false;
};

}  // namespace quarn
