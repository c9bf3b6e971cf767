#include "Base/Diagnostics.h"

#include <array>
#include <cstdio>
#include <cwchar>
#include <mutex>

#include <Common/TextConversion.h>

namespace quarn {

namespace {

// Enough of a text to find it again.
constexpr std::size_t kExcerptLength = 40;

struct Range {
    wchar_t first;
    wchar_t last;
};

// C0 controls, DEL with the C1 controls, line and paragraph separators with the direction marks, isolates.
constexpr std::array kEscaped = {Range{0, 0x1F}, Range{0x7F, 0x9F}, Range{0x200E, 0x200F},
                                 Range{0x2028, 0x202E}, Range{0x2066, 0x2069}};

bool isEscaped(wchar_t character) {
    for (const Range& range : kEscaped)
        if (character >= range.first && character <= range.last) return true;
    return false;
}

// The width of the narrowest terminal in use, without its last column, where some begin a new line.
constexpr std::size_t kStatusWidth = 79;

// What the last line of the terminal shows.
struct Status {
    std::mutex mutex;
    std::size_t width = 0;
};

Status& status() {
    static Status only;
    return only;
}

// Blanks over the text and not a control sequence, which not every terminal knows.
std::string eraserOf(Status& shown) {
    if (shown.width == 0) return {};
    std::string eraser = '\r' + std::string(shown.width, ' ') + '\r';
    shown.width = 0;
    return eraser;
}

// One call writes the line, so that lines of several programs on one terminal do not mix.
void writeLine(std::string_view kind, std::string_view text) {
    const std::lock_guard<std::mutex> lock(status().mutex);
    std::string line = eraserOf(status());
    line += kind;
    line += printable(text);
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

std::string printable(std::string_view text) {
    std::wstring result;
    for (const wchar_t character : fromUtf8(std::string(text))) {
        if (!isEscaped(character)) {
            result += character;
            continue;
        }
        std::array<wchar_t, 16> escape{};
        const wchar_t* pattern = character < 0x100 ? L"\\x%02x" : L"\\u%04x";
        std::swprintf(escape.data(), escape.size(), pattern, static_cast<unsigned int>(character));
        result += escape.data();
    }
    return toUtf8(result);
}

std::string quotedExcerpt(std::string_view text) {
    std::string result = '"' + std::string(text.substr(0, kExcerptLength));
    return result + (text.size() > kExcerptLength ? "...\"" : "\"");
}

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

std::string atPlace(std::string_view file, std::uint64_t line, std::string_view text) {
    std::string result(file);
    if (!file.empty() && line > 0) result += ":" + std::to_string(line);
    if (!file.empty()) result += ": ";
    return result.append(text);
}

}  // namespace quarn
