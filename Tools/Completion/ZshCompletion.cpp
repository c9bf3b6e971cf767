#include "Completion/CompletionText.h"
#include "Completion/ShellCompletion.h"

namespace quarn::tool {

namespace {

// Returns the text as one word of the shell.
std::string quoted(const std::string& text) {
    return "'" + escaped(text, "'", R"('\')") + "'";
}

// The part of an argument of _arguments that completes values.
std::string actionFor(const OptionFacts& option) {
    const std::string title = option.valueName.empty() ? "value" : option.valueName;
    if (!option.choices.empty()) return ":" + title + ":(" + joined(option.choices, " ") + ")";
    return ":" + title + ":" + (option.valueName == "FILE" ? "_files" : " ");
}

std::string descriptionOf(const OptionFacts& option) {
    return "[" + escaped(option.description, "\\[]:", "\\") + "]" +
           (option.takesValue ? actionFor(option) : "");
}

// The arguments of _arguments for an option, one for each of its names. A name excludes the
// others.
std::string argumentsOf(const OptionFacts& option) {
    std::string text;
    const std::string exclusion = option.names.size() > 1 ? "(" + joined(option.names, " ") + ")" : "";
    for (const std::string& name : option.names)
        text += " \\\n                " + quoted(exclusion + name + descriptionOf(option));
    return text;
}

std::string listOf(const std::vector<Command>& commands) {
    std::string text;
    for (const Command& command : commands)
        text += "\n                " + quoted(command.name() + ":" + escaped(command.summary(), "\\:", "\\"));
    return text;
}

// The branch that completes the first word after \p words, and the options.
std::string branchForParent(const Command& parent, const std::string& words) {
    std::string options;
    for (const OptionFacts& option : parent.options()) options += argumentsOf(option);
    return "        " + quoted(words) + ")\n            commands=(" + listOf(parent.commands()) +
           "\n            )\n            _describe command commands\n            _arguments" + options +
           "\n            ;;\n";
}

std::string branchesFor(const Command& command, const std::string& words) {
    if (!command.commands().empty()) {
        std::string branches = branchForParent(command, words);
        for (const Command& below : command.commands())
            branches += branchesFor(below, words + " " + below.name());
        return branches;
    }
    std::string optionArguments;
    std::string arguments;
    for (const OptionFacts& option : command.options()) {
        optionArguments += argumentsOf(option);
        if (option.names.empty()) arguments += " \\\n                " + quoted(actionFor(option));
    }
    return "        " + quoted(words) + ")\n            _arguments" + optionArguments + arguments +
           "\n            ;;\n";
}

}  // namespace

std::string zshCompletion(const Command& tool) {
    std::string branches = branchForParent(tool, "");
    for (const Command& command : tool.commands()) branches += branchesFor(command, command.name());
    return R"(#compdef quarnscreen
# Completion of quarnscreen for zsh, written by "quarnscreen completion zsh".
_quarnscreen() {
    local command= depth=1
    local -a commands
    if ((CURRENT > 2)); then command=${words[2]} depth=2; fi
    case "$command" in
        )" +
           joined(namesOfParents(tool), " | ") +
           R"()
            if ((CURRENT > 3)); then command="$command ${words[3]}" depth=3; fi
            ;;
    esac
    # The words of the command count as one, so that the arguments come first.
    shift $((depth - 1)) words
    ((CURRENT -= depth - 1))
    case "$command" in
)" + branches +
           R"(    esac
}
if [[ "${funcstack[1]}" == _quarnscreen ]]; then
    _quarnscreen "$@"
else
    compdef _quarnscreen quarnscreen
fi
)";
}

}  // namespace quarn::tool
