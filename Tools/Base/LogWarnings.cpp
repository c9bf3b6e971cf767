#include "Base/LogWarnings.h"

#include <mutex>

#include "Base/Diagnostics.h"

namespace quarn::tool {

namespace {

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
    if (collectedTexts != nullptr) {
        if (collectedTexts->empty() || collectedTexts->back() != text) collectedTexts->push_back(text);
        return;
    }
    const std::lock_guard<std::mutex> lock(lastLine().mutex);
    if (text == lastLine().text) return;
    lastLine().text = text;
    writeWarningLine(text);
}

LogWarningCollector::LogWarningCollector(std::vector<std::string>& texts) {
    collectedTexts = &texts;
}

LogWarningCollector::~LogWarningCollector() {
    collectedTexts = nullptr;
}

}  // namespace quarn::tool
