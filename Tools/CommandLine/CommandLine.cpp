#include "CommandLine/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <span>
#include <sstream>
#include <string_view>

#include <QuarnKit/Base/Error.h>

#include "CommandLine/UsageError.h"

namespace quarn::tool {

namespace {

// The parser's names of an option, and the word for its value.
struct NameParts {
    std::string names;
    std::string valueName;
};

NameParts partsOf(const std::string& name) {
    const std::size_t blank = name.find(' ');
    if (blank == std::string::npos) return {.names = name, .valueName = {}};
    return {.names = name.substr(0, blank), .valueName = name.substr(blank + 1)};
}

std::string footerOf(const CommandTexts& texts) {
    return (texts.details.empty() ? "" : texts.details + "\n\n") + "Example:\n  " + texts.example;
}

// The parser shows choices after the word for the value, as in "NAME:{mm,cm}".
std::vector<std::string> choicesIn(const std::string& typeName) {
    const std::size_t first = typeName.find('{');
    const std::size_t last = typeName.find('}');
    std::vector<std::string> words;
    if (first == std::string::npos || last == std::string::npos) return words;
    std::istringstream list(typeName.substr(first + 1, last - first - 1));
    for (std::string word; std::getline(list, word, ',');) words.push_back(word);
    return words;
}

OptionFacts factsOf(const CLI::Option& option) {
    OptionFacts facts;
    for (const std::string& name : option.get_snames()) facts.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) facts.names.push_back("--" + name);
    const std::string typeName = option.get_type_name();
    facts.choices = choicesIn(typeName);
    facts.valueName = typeName.substr(0, typeName.find(':'));
    facts.description = option.get_description();
    facts.takesValue = option.get_items_expected_max() > 0;
    return facts;
}

// The command that a parsed command line names; the program itself if there is none.
const CLI::App& lastCommandIn(const CLI::App& program) {
    const CLI::App* command = &program;
    while (!command->get_subcommands().empty()) command = command->get_subcommands().front();
    return *command;
}

NamedCommand namedCommandOf(const CLI::App& command) {
    NamedCommand named{.name = command.get_name(), .commands = {}, .options = {}};
    for (const CLI::App* above = command.get_parent(); above != nullptr; above = above->get_parent())
        named.name = above->get_name() + " " + named.name;
    for (const CLI::App* const added : command.get_subcommands([](const CLI::App* /*any*/) { return true; }))
        named.commands.push_back(added->get_name());
    for (const CLI::Option* const option : command.get_options())
        for (const std::string& name : option->get_lnames()) named.options.push_back("--" + name);
    return named;
}

// The parser takes the next word as the value of an option such as "--unit=".
void refuseEmptyValues(std::span<const char* const> words) {
    for (const std::string_view word : words) {
        if (word == "--") return;
        if (word.starts_with("--") && word.find('=') + 1 == word.size())
            throw Error({.found = "found " + std::string(word) + " without a value (see --help)"});
    }
}

// The word that the parser could not assign, preferably an option, since the word after it may be
// its value; nothing if there is none.
std::optional<std::string> unassignedWordIn(const CLI::App& program) {
    const std::vector<std::string> words = program.remaining(true);
    auto first = std::find_if(words.begin(), words.end(),
                              [](const std::string& word) { return word.starts_with('-') && word != "--"; });
    if (first == words.end())
        first =
            std::find_if(words.begin(), words.end(), [](const std::string& word) { return word != "--"; });
    if (first == words.end()) return std::nullopt;
    return first->starts_with("--") ? first->substr(0, first->find('=')) : *first;
}

// The parser reports a missing argument or command before a word that it could not assign, although
// the word is usually the cause.
Error usageErrorOf(const CLI::ParseError& error, const CLI::App& program) {
    const auto code = static_cast<CLI::ExitCodes>(error.get_exit_code());
    const NamedCommand command = namedCommandOf(lastCommandIn(program));
    if (code == CLI::ExitCodes::RequiredError || code == CLI::ExitCodes::ExtrasError) {
        if (const auto word = unassignedWordIn(program)) return unknownWordError(*word, command);
        if (!command.commands.empty()) return missingCommandError(command);
    }
    return Error({.found = std::string(error.what()) + " (see --help)"});
}

}  // namespace

Option& Option::required() {
    option->required();
    return *this;
}

Option& Option::choices(const std::vector<std::string>& words) {
    option->check(CLI::IsMember(words));
    return *this;
}

Option& Option::defaultText(const std::string& text) {
    option->default_str(text);
    return *this;
}

Option& Option::excludes(const Option& other) {
    option->excludes(other.option);
    return *this;
}

Option& Option::needs(const Option& other) {
    option->needs(other.option);
    return *this;
}

Command Command::addCommand(const CommandTexts& texts) {
    CLI::App* const added = command->add_subcommand(texts.name, texts.summary);
    added->footer(footerOf(texts));
    return Command(*added);
}

void Command::requireCommand() {
    command->require_subcommand(1);
}

Option Command::argument(const std::string& name, std::string& value, const std::string& description) {
    return option(name, value, description);
}

Option Command::option(const std::string& name, std::string& value, const std::string& description) {
    return option(
               name, [&value](const std::string& text) { value = text; }, description)
        .defaultText(value);
}

Option Command::option(const std::string& name, const std::function<void(const std::string&)>& setValue,
                       const std::string& description) {
    const NameParts parts = partsOf(name);
    CLI::Option* const added = command->add_option_function(parts.names, setValue, description);
    added->type_name(parts.valueName);
    return Option(*added);
}

Option Command::repeatedOption(const std::string& name, std::vector<std::string>& values,
                               const std::string& description) {
    const NameParts parts = partsOf(name);
    CLI::Option* const added = command->add_option(parts.names, values, description);
    // Each occurrence takes one value, so that an argument may follow it.
    added->type_name(parts.valueName)->allow_extra_args(false);
    return Option(*added);
}

Option Command::flag(const std::string& name, std::function<void()> onGiven, const std::string& description) {
    return Option(*command->add_flag_callback(name, std::move(onGiven), description));
}

void Command::onRun(std::function<void()> action) {
    command->callback(std::move(action));
}

std::string Command::name() const {
    return command->get_name();
}

std::string Command::summary() const {
    return command->get_description();
}

std::vector<Command> Command::commands() const {
    std::vector<Command> all;
    for (CLI::App* const added : command->get_subcommands([](const CLI::App* /*any*/) { return true; }))
        all.emplace_back(*added);
    return all;
}

std::vector<OptionFacts> Command::options() const {
    std::vector<OptionFacts> all;
    for (const CLI::Option* const option : std::as_const(*command).get_options())
        all.push_back(factsOf(*option));
    return all;
}

CommandLine::CommandLine(const CommandTexts& texts, const std::string& version)
    : app(std::make_unique<CLI::App>(texts.summary, texts.name)) {
    app->set_version_flag("--version", version);
    app->footer(footerOf(texts));
}

CommandLine::~CommandLine() = default;

Command CommandLine::root() {
    return Command(*app);
}

std::optional<std::string> CommandLine::run(int argc, const char* const* argv) {
    refuseEmptyValues(std::span(argv, static_cast<std::size_t>(argc)));
    try {
        app->parse(argc, argv);
        return std::nullopt;
    } catch (const CLI::Success& request) {
        std::ostringstream text;
        app->exit(request, text, text);
        return text.str();
    } catch (const CLI::ParseError& error) {
        throw usageErrorOf(error, *app);
    }
}

}  // namespace quarn::tool
