#include "Base/Diagnostics.h"

#include <array>
#include <cstdio>
#include <cwchar>
#include <mutex>

#include <Common/TextConversion.h>
#include <QuarnKit/Base/PrintableText.h>

namespace quarn::tool {

namespace {

// The width of the narrowest terminal in use, without its last column: some wrap after it.
constexpr std::size_t kStatusWidth = 79;

// The status text at the bottom of the terminal.
struct Status {
    std::mutex mutex;
    std::size_t width = 0;
};

Status& status() {
    static Status only;
    return only;
}

// Overwrites the text with blanks, because not every terminal supports control sequences.
std::string eraserOf(Status& shown) {
    if (shown.width == 0) return {};
    std::string eraser = '\r' + std::string(shown.width, ' ') + '\r';
    shown.width = 0;
    return eraser;
}

// Write the line by one call, so that lines of several programs on one terminal do not mix.
void writeLine(std::string_view kind, std::string_view text) {
    const std::lock_guard<std::mutex> lock(status().mutex);
    std::string line = eraserOf(status());
    line += kind;
    line += printable(text);
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

void writeErrorLine(std::string_view text) {
    writeLine("error: ", text);
}

void writeWarningLine(std::string_view text) {
    writeLine("warning: ", text);
}

void writeNoteLine(std::string_view text) {
    writeLine("note: ", text);
}

void writeStatusLine(std::string_view text) {
    const std::wstring shown = fromUtf8(printable(text)).substr(0, kStatusWidth);
    const std::lock_guard<std::mutex> lock(status().mutex);
    const std::string line = eraserOf(status()) + toUtf8(shown);
    status().width = shown.size();
    std::fwrite(line.data(), 1, line.size(), stderr);
}

void clearStatusLine() {
    const std::lock_guard<std::mutex> lock(status().mutex);
    const std::string eraser = eraserOf(status());
    std::fwrite(eraser.data(), 1, eraser.size(), stderr);
}

}  // namespace quarn::tool
