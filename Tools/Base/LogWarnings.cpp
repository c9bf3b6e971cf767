#include "Base/LogWarnings.h"

#include <atomic>
#include <mutex>
#include <string_view>

#include "Base/Diagnostics.h"

namespace quarn::tool {

namespace {

// The beginning of the library's warning. The number after it is that of unmatched edges.
constexpr std::string_view kSeveralBoundaries = "Multiple boundaries are not currently supported";

std::atomic<bool> hasSeveralBoundaries = false;

thread_local std::vector<std::string>* collectedTexts = nullptr;

struct LastLine {
    std::mutex mutex;
    std::string text;
};

LastLine& lastLine() {
    static LastLine only;
    return only;
}

}  // namespace

void addLogWarning(const std::string& text) {
    if (text.starts_with(kSeveralBoundaries)) {
        hasSeveralBoundaries = true;
        return;
    }
    if (collectedTexts != nullptr) {
        if (collectedTexts->empty() || collectedTexts->back() != text) collectedTexts->push_back(text);
        return;
    }
    const std::lock_guard<std::mutex> lock(lastLine().mutex);
    if (text == lastLine().text) return;
    lastLine().text = text;
    writeWarningLine(text);
}

bool takeSeveralBoundaries() {
    return hasSeveralBoundaries.exchange(false);
}

LogWarningCollector::LogWarningCollector(std::vector<std::string>& texts) {
    collectedTexts = &texts;
}

LogWarningCollector::~LogWarningCollector() {
    collectedTexts = nullptr;
}

}  // namespace quarn::tool
