#include "Error.h"

#include <cerrno>
#include <system_error>

namespace quarn {

namespace {

std::string messageOf(const ErrorDetails& details) {
    std::string sentence = details.found;
    if (!details.expected.empty()) sentence += ", expected " + details.expected;
    return withLocation(details.file, details.line, sentence);
}

}  // namespace

Error::Error(ErrorDetails errorDetails) {
    std::string message = messageOf(errorDetails);
    contents = std::make_shared<const Contents>(Contents{std::move(errorDetails), std::move(message)});
}

Error Error::at(const std::string& file, std::uint64_t line) const {
    ErrorDetails changed = details();
    changed.file = file;
    changed.line = line;
    return Error(std::move(changed));
}

Error Error::with(Remedy remedy) const {
    ErrorDetails changed = details();
    changed.remedy = std::move(remedy);
    return Error(std::move(changed));
}

Error systemError(const std::string& file, const std::string& action, ErrorKind kind) {
    return Error(
        {.kind = kind, .found = action + ": " + std::generic_category().message(errno), .file = file});
}

std::string withLocation(const std::string& file, std::uint64_t line, const std::string& text) {
    if (file.empty()) return text;
    return file + (line > 0 ? ":" + std::to_string(line) : "") + ": " + text;
}

}  // namespace quarn
