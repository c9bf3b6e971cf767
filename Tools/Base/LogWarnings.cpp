#include "Base/LogWarnings.h"

#include <mutex>

#include "Base/Diagnostics.h"

namespace quarn {

namespace {

thread_local std::vector<std::string>* heldTexts = nullptr;

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
    if (heldTexts != nullptr) {
        if (heldTexts->empty() || heldTexts->back() != text) heldTexts->push_back(text);
        return;
    }
    const std::lock_guard<std::mutex> lock(lastLine().mutex);
    if (text == lastLine().text) return;
    lastLine().text = text;
    writeWarningLine(text);
}

HeldLogWarnings::HeldLogWarnings(std::vector<std::string>& texts) {
    heldTexts = &texts;
}

HeldLogWarnings::~HeldLogWarnings() {
    heldTexts = nullptr;
}

}  // namespace quarn
