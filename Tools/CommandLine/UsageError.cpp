#include "CommandLine/UsageError.h"

#include <QuarnKit/Base/PrintableText.h>

#include "CommandLine/NearestWord.h"

namespace quarn::tool {

namespace {

constexpr const char* kSeeHelp = " (see --help)";

std::string oneOf(const std::vector<std::string>& words) {
    std::string list = "one of ";
    for (const std::string& word : words) list += (&word == &words.front() ? "" : ", ") + word;
    return list;
}

}  // namespace

Error unknownWordError(const std::string& word, const NamedCommand& command) {
    if (word.starts_with('-')) {
        const auto nearest = nearestWord(word, command.options);
        return Error({.found = "found the option " + quotedExcerpt(word) + ", which " + command.name +
                               " does not have" + (nearest ? ", did you mean " + *nearest + "?" : "") +
                               kSeeHelp});
    }
    if (command.commands.empty())
        return Error({.found = "found the argument " + quotedExcerpt(word) + ", one more than " +
                               command.name + " takes" + kSeeHelp});
    const auto nearest = nearestWord(word, command.commands);
    return Error(
        {.found = "found the command " + quotedExcerpt(word) + ", which " + command.name +
                  " does not have, " +
                  (nearest ? "did you mean " + *nearest + "?" : "expected " + oneOf(command.commands)) +
                  kSeeHelp});
}

Error missingCommandError(const NamedCommand& command) {
    return Error(
        {.found = "found no command after " + command.name, .expected = oneOf(command.commands) + kSeeHelp});
}

}  // namespace quarn::tool
