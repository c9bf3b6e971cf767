#include "Base/ProgressLine.h"

#include <unistd.h>

#include <system_error>

#include "Base/Diagnostics.h"

namespace quarn::tool {

namespace {

constexpr std::chrono::milliseconds kFirstDelay(1000);     // shorter operations need no line
constexpr std::chrono::milliseconds kUpdateInterval(500);  // between two lines

// Tenths of seconds below ten seconds, then whole seconds.
std::string durationText(std::chrono::steady_clock::duration duration) {
    constexpr std::int64_t kFirstWhole = 100;
    const auto tenths = std::chrono::duration_cast<std::chrono::milliseconds>(duration).count() / 100;
    std::string text = std::to_string(tenths / 10);
    if (tenths < kFirstWhole) text += "." + std::to_string(tenths % 10);
    return text + " s";
}

}  // namespace

ProgressLine::ProgressLine(ProgressVisibility visibility) {
    if (visibility == ProgressVisibility::Hidden || ::isatty(STDERR_FILENO) == 0) return;
    try {
        thread = std::thread([this] { show(); });
    } catch (const std::system_error&) {
        // Continue without a progress line.
    }
}

ProgressLine::~ProgressLine() {
    if (!thread.joinable()) return;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isStopping = true;
    }
    stopCondition.notify_one();
    thread.join();
    clearStatusLine();
}

void ProgressLine::setStage(std::string newStage) {
    if (!isShown()) return;
    const std::lock_guard<std::mutex> lock(mutex);
    stage = std::move(newStage);
}

void ProgressLine::show() {
    std::unique_lock<std::mutex> lock(mutex);
    for (auto next = start + kFirstDelay;; next += kUpdateInterval) {
        if (stopCondition.wait_until(lock, next, [this] { return isStopping; })) return;
        if (!stage.empty()) writeStatusLine(line());
    }
}

std::string ProgressLine::line() const {
    return stage + ", " + durationText(std::chrono::steady_clock::now() - start);
}

}  // namespace quarn::tool
