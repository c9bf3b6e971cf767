#include "Base/ProgressLine.h"

#include <unistd.h>

#include <system_error>

#include "Base/Diagnostics.h"

namespace quarn {

namespace {

constexpr std::chrono::milliseconds kPatience(1000);  // what ends sooner needs no line
constexpr std::chrono::milliseconds kPause(500);      // between two lines

// Tenths of seconds as long as they can be read, then seconds.
std::string durationText(std::chrono::steady_clock::duration duration) {
    constexpr std::int64_t kFirstWhole = 100;
    const auto tenths = std::chrono::duration_cast<std::chrono::milliseconds>(duration).count() / 100;
    std::string text = std::to_string(tenths / 10);
    if (tenths < kFirstWhole) text += "." + std::to_string(tenths % 10);
    return text + " s";
}

}  // namespace

StageClock::StageClock(bool isWanted) {
    if (!isWanted || ::isatty(STDERR_FILENO) == 0) return;
    try {
        thread = std::thread([this] { show(); });
    } catch (const std::system_error&) {
        // The work goes on without a line about it.
    }
}

StageClock::~StageClock() {
    if (!thread.joinable()) return;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isEnding = true;
    }
    ends.notify_one();
    thread.join();
    clearStatusLine();
}

void StageClock::enter(std::string newStage) {
    if (!isShown()) return;
    const std::lock_guard<std::mutex> lock(mutex);
    stage = std::move(newStage);
}

void StageClock::show() {
    std::unique_lock<std::mutex> lock(mutex);
    for (auto next = start + kPatience;; next += kPause) {
        if (ends.wait_until(lock, next, [this] { return isEnding; })) return;
        if (!stage.empty()) writeStatusLine(line());
    }
}

std::string StageClock::line() const {
    return stage + ", " + durationText(std::chrono::steady_clock::now() - start);
}

}  // namespace quarn
