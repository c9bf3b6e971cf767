/// \file
/// Command lines: commands with their arguments, options and help texts. For main() and the
/// commands. CommandLine.cpp alone includes the parser library, because its headers take seconds to
/// compile.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace quarn::tool {

/// An argument, option or flag of a command. Copies refer to the same one, and are valid as long as
/// its CommandLine.
class Option {
public:
    explicit Option(CLI::Option& parserOption) : option(&parserOption) {}

    /// Rejects command lines without this option.
    Option& required();

    /// Rejects other values than \p words, which the help and the completion list.
    Option& choices(const std::vector<std::string>& words);

    /// Sets the default that the help shows.
    Option& defaultText(const std::string& text);

    /// Rejects command lines with both options.
    Option& excludes(const Option& other);

    /// Rejects command lines with this option and without \p other.
    Option& needs(const Option& other);

private:
    CLI::Option* option;
};

/// The properties of an argument, option or flag that a shell completion needs.
struct OptionFacts {
    std::vector<std::string> names;    ///< With their dashes; empty for an argument.
    std::vector<std::string> choices;  ///< The only values, if they are limited.
    std::string valueName;             ///< Such as FILE; empty for a flag.
    std::string description;
    bool takesValue = false;
};

/// The texts of a command's help.
struct CommandTexts {
    std::string name;
    std::string summary;       ///< One line.
    std::string details = {};  ///< Paragraphs after the options; may be empty.
    std::string example;       ///< A command line that works in the project's folder.
};

/// A command of a CommandLine. Copies refer to the same one, and are valid as long as the
/// CommandLine.
class Command {
public:
    explicit Command(CLI::App& parserCommand) : command(&parserCommand) {}

    /// Adds a command whose name follows the name of this one.
    Command addCommand(const CommandTexts& texts);

    /// Rejects command lines that name none of the added commands.
    void requireCommand();

    /// Adds an argument. It is optional unless Option::required() is called.
    /// \param name a word for the argument and one for its value, as in "SCREEN FILE"
    /// \param value set to the argument's text; it has to outlive the CommandLine. The help shows
    /// its present text as the default, unless that is empty
    Option argument(const std::string& name, std::string& value, const std::string& description);

    /// Adds an option with a value.
    /// \param name the option's names and a word for its value, as in "-o,--output FILE"
    /// \param value as for argument()
    Option option(const std::string& name, std::string& value, const std::string& description);

    /// Adds an option with a value.
    /// \param setValue called with the option's text; its exceptions leave CommandLine::run()
    Option option(const std::string& name, const std::function<void(const std::string&)>& setValue,
                  const std::string& description);

    /// Adds an option that may be given several times.
    /// \param values set to the option's texts; they have to outlive the CommandLine
    Option repeatedOption(const std::string& name, std::vector<std::string>& values,
                          const std::string& description);

    /// Adds an option whose value is one of several words. Sets \p target to the value of the word.
    template <class Value>
    Option choice(const std::string& name, Value& target,
                  const std::vector<std::pair<std::string, std::type_identity_t<Value>>>& values,
                  const std::string& description) {
        std::vector<std::string> words;
        words.reserve(values.size());
        for (const auto& [word, value] : values) words.push_back(word);
        const auto setTarget = [values, &target](const std::string& text) {
            for (const auto& [word, value] : values)
                if (word == text) target = value;
        };
        return option(name, setTarget, description).choices(words);
    }

    /// Adds an option without a value.
    /// \param value assigned to \p target if the option is given
    template <class Value>
    Option flag(const std::string& name, Value& target, std::type_identity_t<Value> value,
                const std::string& description) {
        return flag(
            name, [value, &target] { target = value; }, description);
    }
    Option flag(const std::string& name, std::function<void()> onGiven, const std::string& description);

    /// Sets the action of the command.
    void onRun(std::function<void()> action);

    /// Sets the action of the command, and returns the options that the action gets. They live as
    /// long as the CommandLine, so that they can be targets of the functions above.
    template <class Options>
    Options& onRun(void (*action)(const Options& options)) {
        const auto options = std::make_shared<Options>();
        onRun([options, action] { action(*options); });
        return *options;
    }

    [[nodiscard]] std::string name() const;
    [[nodiscard]] std::string summary() const;
    [[nodiscard]] std::vector<Command> commands() const;
    [[nodiscard]] std::vector<OptionFacts> options() const;

private:
    CLI::App* command;
};

/// The command line of a program. Every command has the option --help.
class CommandLine {
public:
    /// \param version the text of the option --version
    CommandLine(const CommandTexts& texts, const std::string& version);
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;
    ~CommandLine();

    /// Returns the program itself, whose commands are the first words of a command line.
    [[nodiscard]] Command root();

    /// Parses the arguments of main(), and runs the command that they name.
    /// \return the text of --help or --version if one is given; then no command runs
    /// \throws Error if the arguments are not valid, and every exception of the command
    [[nodiscard]] std::optional<std::string> run(int argc, const char* const* argv);

private:
    std::unique_ptr<CLI::App> app;
};

}  // namespace quarn::tool
