/// \file
/// What the tool does at the moment and since when, for a person who waits.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace quarn::tool {

enum class ProgressVisibility { Hidden, Shown };

/// Shows a line such as "reading dome.obj, 1.2 s" on the standard error stream, from the first second on, and takes it
/// away when it dies. Nothing where that stream is no terminal.
class ProgressLine {
public:
    /// Starts the clock. \param visibility Hidden for a line that never appears
    explicit ProgressLine(ProgressVisibility visibility = ProgressVisibility::Shown);
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine();

    /// Says what is done from now on; nothing is shown before.
    void setStage(std::string newStage);

    /// Whether there is anybody to look at it.
    [[nodiscard]] bool isShown() const { return thread.joinable(); }

private:
    void show();
    [[nodiscard]] std::string line() const;

    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    std::mutex mutex;  // of the two below
    std::string stage;
    bool isStopping = false;
    std::condition_variable stopCondition;
    std::thread thread;
};

}  // namespace quarn::tool
