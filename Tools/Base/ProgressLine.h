/// \file
/// Progress display for long operations: the current stage and the elapsed time.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace quarn::tool {

enum class ProgressVisibility { Hidden, Shown };

/// Shows a line such as "reading dome.obj, 1.2 s" on the standard error stream, from the first
/// second on, and erases it when destroyed. Does nothing if that stream is not a terminal, or if no
/// thread can be started.
class ProgressLine {
public:
    /// Starts the clock. \param visibility Hidden for a line that never appears
    explicit ProgressLine(ProgressVisibility visibility = ProgressVisibility::Shown);
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine();

    /// Sets the stage. Nothing is shown before the first call.
    void setStage(std::string newStage);

    /// True if there is a terminal that shows the line.
    [[nodiscard]] bool isShown() const { return thread.joinable(); }

private:
    void show();
    [[nodiscard]] std::string line() const;

    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    std::mutex mutex;  // guards the two members below
    std::string stage;
    bool isStopping = false;
    std::condition_variable stopCondition;
    std::thread thread;
};

}  // namespace quarn::tool
