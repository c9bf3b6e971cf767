#include "Completion/CompletionText.h"
#include "Completion/ShellCompletion.h"

namespace quarn::tool {

namespace {

// The words that may follow the option, or be the argument.
std::string candidatesFor(const OptionFacts& option) {
    if (!option.choices.empty()) return R"(candidates=(-W ")" + joined(option.choices, " ") + R"("))";
    return option.valueName == "FILE" ? "candidates=(-f)" : "candidates=()";
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

}  // namespace

std::string bashCompletion(const Command& tool) {
    const auto commands = tool.commands();
    std::vector<std::string> firstWords = namesOf(commands);
    std::string branches;
    for (const Command& command : commands) branches += branchesFor(command, command.name());
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
           joined(namesOfParents(tool), " | ") +
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

}  // namespace quarn::tool
