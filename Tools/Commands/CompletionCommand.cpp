#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include <QuarnKit/Base/OutputFile.h>

#include "CommandLine/Options.h"
#include "Commands/Commands.h"

namespace quarn::tool {

namespace {

std::string joined(const std::vector<std::string>& words, const std::string& separator) {
    std::string text;
    for (const std::string& word : words) text += text.empty() ? word : separator + word;
    return text;
}

std::vector<std::string> namesOf(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
    return names;
}

bool takesValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

// What may stand for the option's value. A choice shows in its type's name, as in "NAME:{mm,cm}".
std::string candidatesFor(const CLI::Option& option) {
    std::string type = option.get_type_name();
    const std::size_t first = type.find('{');
    const std::size_t last = type.find('}');
    if (first != std::string::npos && last != std::string::npos) {
        std::string words = type.substr(first + 1, last - first - 1);
        for (char& character : words)
            if (character == ',') character = ' ';
        return R"(candidates=(-W ")" + words + R"("))";
    }
    return type.starts_with("FILE") ? "candidates=(-f)" : "candidates=()";
}

std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App* /*any*/) { return true; });
}

std::vector<std::string> namesOf(const std::vector<const CLI::App*>& commands) {
    std::vector<std::string> names;
    names.reserve(commands.size());
    for (const CLI::App* command : commands) names.push_back(command->get_name());
    return names;
}

// The branches of one command and those below it: its options, what each of them takes, and what stands
// elsewhere. \p words are the words that lead to it.
std::string branchesFor(const CLI::App& command, const std::string& words) {
    std::vector<std::string> names;
    std::string values;
    std::string positional;
    const auto commandsBelow = commandsOf(command);
    if (!commandsBelow.empty())
        positional = R"(candidates=(-W ")" + joined(namesOf(commandsBelow), " ") + R"("))";
    std::string branchesBelow;
    for (const CLI::App* below : commandsBelow)
        branchesBelow += branchesFor(*below, words + " " + below->get_name());
    for (const CLI::Option* option : command.get_options()) {
        const auto own = namesOf(*option);
        names.insert(names.end(), own.begin(), own.end());
        if (own.empty()) {
            if (positional.empty()) positional = candidatesFor(*option);
        } else if (takesValue(*option)) {
            values += "                " + joined(own, " | ") + ") " + candidatesFor(*option) + " ;;\n";
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

std::string bashCompletion(const CLI::App& tool) {
    const auto commands = commandsOf(tool);
    std::vector<std::string> firstWords = namesOf(commands);
    std::vector<std::string> parents;
    std::string branches;
    for (const CLI::App* command : commands) {
        branches += branchesFor(*command, command->get_name());
        if (!commandsOf(*command).empty()) parents.push_back(command->get_name());
    }
    for (const CLI::Option* option : tool.get_options())
        for (const std::string& name : namesOf(*option)) firstWords.push_back(name);

    return R"(# Completion of quarnscreen for bash, made by "quarnscreen completion bash".
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

}  // namespace

void registerCompletionCommand(CLI::App& tool) {
    CLI::App& command = addCommand(tool, "completion", "Write the completion script of a shell",
                                   "source <(quarnscreen completion bash)");
    const auto shell = std::make_shared<std::string>();
    command.add_option("SHELL", *shell, "Shell that the script is for")
        ->required()
        ->type_name("")
        ->check(CLI::IsMember({"bash"}));
    command.callback([shell, &tool] {
        OutputFile output("-", {});
        output.write(bashCompletion(tool));
        output.finish();
    });
}

}  // namespace quarn::tool
