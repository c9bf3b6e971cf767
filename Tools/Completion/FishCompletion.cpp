#include "Completion/CompletionText.h"
#include "Completion/ShellCompletion.h"

namespace quarn::tool {

namespace {

// Returns the text as one word of the shell.
std::string quoted(const std::string& text) {
    return "'" + escaped(text, "'\\", "\\") + "'";
}

std::string lineFor(const std::string& words, const std::string& rest) {
    return "complete -c quarnscreen -n " + quoted("__quarnscreen_is " + quoted(words)) + rest + "\n";
}

// Arguments of "complete" for the words that may follow the option, or be the argument.
std::string candidatesFor(const OptionFacts& option) {
    if (!option.choices.empty()) return " -x -a " + quoted(joined(option.choices, " "));
    return option.valueName == "FILE" ? " -r -F" : " -x";
}

std::string lineForOption(const OptionFacts& option, const std::string& words) {
    std::string rest;
    for (const std::string& name : option.names)
        rest += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (option.takesValue) rest += candidatesFor(option);
    return lineFor(words, rest + " -d " + quoted(option.description));
}

std::string lineForArgument(const OptionFacts& argument, const std::string& words) {
    if (!argument.choices.empty()) return lineFor(words, " -a " + quoted(joined(argument.choices, " ")));
    return argument.valueName == "FILE" ? lineFor(words, " -F") : "";
}

// The lines of one command and of its commands.
std::string linesFor(const Command& command, const std::string& words) {
    std::string lines;
    for (const Command& below : command.commands()) {
        lines += lineFor(words, " -a " + quoted(below.name()) + " -d " + quoted(below.summary()));
        lines += linesFor(below, words.empty() ? below.name() : words + " " + below.name());
    }
    std::string argument;
    for (const OptionFacts& option : command.options()) {
        if (!option.names.empty())
            lines += lineForOption(option, words);
        else if (argument.empty())
            argument = lineForArgument(option, words);
    }
    return lines + argument;
}

}  // namespace

std::string fishCompletion(const Command& tool) {
    return R"(# Completion of quarnscreen for fish, written by "quarnscreen completion fish".
function __quarnscreen_is --description 'True if the words before the cursor name this command'
    set -l words (commandline -opc)
    set -l command "$words[2]"
    if contains -- "$command" )" +
           joined(namesOfParents(tool), " ") + R"(; and test (count $words) -gt 2
        set command "$command $words[3]"
    end
    test "$command" = "$argv[1]"
end
complete -c quarnscreen -f
)" + linesFor(tool, "");
}

}  // namespace quarn::tool
