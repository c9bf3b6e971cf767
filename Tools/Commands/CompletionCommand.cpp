#include <optional>
#include <string>
#include <vector>

#include <QuarnKit/Base/OutputFile.h>

#include "Commands/Commands.h"

namespace quarn::tool {

namespace {

struct CompletionOptions {
    std::string shell;
    std::optional<Command> tool;
};

std::string joined(const std::vector<std::string>& words, const std::string& separator) {
    std::string text;
    for (const std::string& word : words) text += text.empty() ? word : separator + word;
    return text;
}

// The words that may follow the option, or be the argument.
std::string candidatesFor(const OptionFacts& option) {
    if (!option.choices.empty()) return R"(candidates=(-W ")" + joined(option.choices, " ") + R"("))";
    return option.valueName == "FILE" ? "candidates=(-f)" : "candidates=()";
}

std::vector<std::string> namesOf(const std::vector<Command>& commands) {
    std::vector<std::string> names;
    names.reserve(commands.size());
    for (const Command& command : commands) names.push_back(command.name());
    return names;
}

// The branches of one command and of its commands: its options, the values of each, and its
// arguments.
// \p words are the words of the command.
std::string branchesFor(const Command& command, const std::string& words) {
    std::vector<std::string> names;
    std::string values;
    std::string positional;
    const auto commandsBelow = command.commands();
    if (!commandsBelow.empty())
        positional = R"(candidates=(-W ")" + joined(namesOf(commandsBelow), " ") + R"("))";
    std::string branchesBelow;
    for (const Command& below : commandsBelow)
        branchesBelow += branchesFor(below, words + " " + below.name());
    for (const OptionFacts& option : command.options()) {
        names.insert(names.end(), option.names.begin(), option.names.end());
        if (option.names.empty()) {
            if (positional.empty()) positional = candidatesFor(option);
        } else if (option.takesValue) {
            values +=
                "                " + joined(option.names, " | ") + ") " + candidatesFor(option) + " ;;\n";
        }
    }
    if (positional.empty()) positional = "candidates=()";
    return "        \"" + words + "\")\n" +
           R"(            case "$current" in
                -*) candidates=(-W ")" +
           joined(names, " ") + R"(") ;;
                *) )" +
           positional +
           R"( ;;
            esac
            case "$previous" in
)" + values +
           R"(                *) ;;
            esac
            ;;
)" + branchesBelow;
}

std::string bashCompletion(const Command& tool) {
    const auto commands = tool.commands();
    std::vector<std::string> firstWords = namesOf(commands);
    std::vector<std::string> parents;
    std::string branches;
    for (const Command& command : commands) {
        branches += branchesFor(command, command.name());
        if (!command.commands().empty()) parents.push_back(command.name());
    }
    for (const OptionFacts& option : tool.options())
        firstWords.insert(firstWords.end(), option.names.begin(), option.names.end());

    return R"(# Completion of quarnscreen for bash, written by "quarnscreen completion bash".
_quarnscreen() {
    local current=${COMP_WORDS[COMP_CWORD]}
    local previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command=
    local candidates=(-W ")" +
           joined(firstWords, " ") + R"(")
    if ((COMP_CWORD > 1)); then command=${COMP_WORDS[1]}; fi
    case "$command" in
        )" +
           joined(parents, " | ") +
           R"()
            if ((COMP_CWORD > 2)); then command="$command ${COMP_WORDS[2]}"; fi
            ;;
        *) ;;
    esac
    case "$command" in
)" + branches +
           R"(        *) ;;
    esac
    COMPREPLY=()
    if ((${#candidates[@]} > 0)); then
        mapfile -t COMPREPLY < <(compgen "${candidates[@]}" -- "$current")
    fi
}
complete -o filenames -F _quarnscreen quarnscreen
)";
}

void run(const CompletionOptions& options) {
    OutputFile output("-", {});
    output.write(bashCompletion(*options.tool));
    output.finish();
}

}  // namespace

void registerCompletionCommand(Command& tool) {
    Command command = tool.addCommand({.name = "completion",
                                       .summary = "Write the completion script of a shell",
                                       .example = "source <(quarnscreen completion bash)"});
    CompletionOptions& options = command.onRun(run);
    options.tool = tool;
    command.argument("SHELL", options.shell, "Shell that the script is for").choices({"bash"}).required();
}

}  // namespace quarn::tool
