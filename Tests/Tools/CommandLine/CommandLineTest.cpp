#include "CommandLine/CommandLine.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include <QuarnKit/Base/Error.h>

namespace quarn::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using tool::Command;
using tool::CommandLine;
using tool::OptionFacts;

enum class Format { Csv, Json };

// A program with one command of arguments, options and flags.
class CommandLineTest : public ::testing::Test {
protected:
    CommandLineTest() {
        Command root = line.root();
        root.requireCommand();
        Command show = root.addCommand({.name = "show",
                                        .summary = "Show a screen",
                                        .details = "Details of it.",
                                        .example = "screens show wall.xml"});
        show.argument("SCREEN FILE", file, "Screen to show").required();
        show.option("-o,--output FILE", output, "File to write");
        show.option(
            "--size LENGTH", [this](const std::string& text) { sizes.push_back(text); }, "Size of it");
        show.choice("--unit NAME", unit, {{"m", 1}, {"mm", 1000}}, "Unit of it");
        show.flag("--json", format, Format::Json, "Write JSON");
        show.onRun([this] { ++runs; });
        root.addCommand({.name = "list", .summary = "List screens", .example = "screens list"}).onRun([] {
            throw std::runtime_error("no screens");
        });
    }

    // Parses the words after the program's name.
    std::optional<std::string> run(std::vector<const char*> words) {
        words.insert(words.begin(), "screens");
        return line.run(static_cast<int>(words.size()), words.data());
    }

    // The message of the error; empty if there is none.
    std::string errorOf(const std::vector<const char*>& words) {
        try {
            static_cast<void>(run(words));
        } catch (const Error& error) {
            EXPECT_EQ(error.details().kind, ErrorKind::BadInput);
            return error.what();
        }
        return "";
    }

    [[nodiscard]] Command show() { return line.root().commands().at(0); }

    std::string file;
    std::string output = "-";
    std::vector<std::string> sizes;
    int unit = 0;
    Format format = Format::Csv;
    int runs = 0;
    CommandLine line{{.name = "screens", .summary = "Screens.", .example = "screens show wall.xml"}, "1.2.3"};
};

TEST_F(CommandLineTest, ArgumentsOptionsAndFlagsReachTheirTargets) {
    EXPECT_EQ(run({"show", "wall.xml", "-o", "x.csv", "--size=2m", "--unit", "mm", "--json"}), std::nullopt);
    EXPECT_EQ(file, "wall.xml");
    EXPECT_EQ(output, "x.csv");
    EXPECT_THAT(sizes, ElementsAre("2m"));
    EXPECT_EQ(unit, 1000);
    EXPECT_EQ(format, Format::Json);
    EXPECT_EQ(runs, 1);
}

TEST_F(CommandLineTest, TargetsKeepTheirDefaultsWithoutOptions) {
    EXPECT_EQ(run({"show", "wall.xml"}), std::nullopt);
    EXPECT_EQ(output, "-");
    EXPECT_THAT(sizes, IsEmpty());
    EXPECT_EQ(unit, 0);
    EXPECT_EQ(format, Format::Csv);
}

TEST_F(CommandLineTest, OptionsMayComeBeforeArguments) {
    EXPECT_EQ(run({"show", "--output=x.csv", "wall.xml"}), std::nullopt);
    EXPECT_EQ(file, "wall.xml");
}

TEST_F(CommandLineTest, ValueMayBeginWithADashAfterTheEqualsSign) {
    EXPECT_EQ(run({"show", "wall.xml", "--size=-2m"}), std::nullopt);
    EXPECT_THAT(sizes, ElementsAre("-2m"));
}

TEST_F(CommandLineTest, RepeatedOptionIsAnErrorThatNamesIt) {
    EXPECT_THAT(errorOf({"show", "wall.xml", "--size", "1m", "--size", "2m"}), HasSubstr("--size"));
    EXPECT_EQ(runs, 0);
}

TEST_F(CommandLineTest, RepeatedFlagCountsOnce) {
    EXPECT_EQ(run({"show", "wall.xml", "--json", "--json"}), std::nullopt);
    EXPECT_EQ(format, Format::Json);
}

TEST_F(CommandLineTest, ErrorsNameTheWordAndReferToTheHelp) {
    EXPECT_THAT(errorOf({"show"}), AllOf(HasSubstr("SCREEN"), HasSubstr("see --help")));
    EXPECT_THAT(errorOf({"show", "wall.xml", "--size"}), HasSubstr("--size"));
    EXPECT_THAT(errorOf({"show", "wall.xml", "--unit", "cubit"}),
                AllOf(HasSubstr("--unit"), HasSubstr("cubit")));
    EXPECT_THAT(errorOf({"show", "wall.xml", "--sizes", "2"}), HasSubstr("--sizes"));
    EXPECT_THAT(errorOf({"show", "wall.xml", "dome.xml"}), HasSubstr("dome.xml"));
    EXPECT_NE(errorOf({}), "");
    EXPECT_NE(errorOf({"draw"}), "");
    EXPECT_EQ(runs, 0);
}

TEST_F(CommandLineTest, ExceptionsOfACommandLeaveRun) {
    EXPECT_THROW(static_cast<void>(run({"list"})), std::runtime_error);
}

TEST_F(CommandLineTest, ExceptionsOfAnOptionLeaveRun) {
    show().option(
        "--bad TEXT", [](const std::string& text) { throw Error({.found = "found " + text}); }, "Bad");
    EXPECT_EQ(errorOf({"show", "wall.xml", "--bad", "word"}), "found word");
}

TEST_F(CommandLineTest, HelpListsTheCommandsAndRunsNone) {
    const std::optional<std::string> help = run({"--help"});
    ASSERT_TRUE(help);
    EXPECT_THAT(*help, AllOf(HasSubstr("Screens."), HasSubstr("Show a screen"), HasSubstr("List screens"),
                             HasSubstr("Example:\n  screens show wall.xml")));
    EXPECT_EQ(runs, 0);
}

TEST_F(CommandLineTest, HelpOfACommandListsItsOptions) {
    const std::optional<std::string> help = run({"show", "--help"});
    ASSERT_TRUE(help);
    EXPECT_THAT(*help, AllOf(HasSubstr("-o,--output FILE"), HasSubstr("--unit NAME"), HasSubstr("{m,mm}"),
                             HasSubstr("Details of it.\n\nExample:\n  screens show wall.xml")));
    EXPECT_THAT(*help, Not(HasSubstr("List screens")));
    EXPECT_EQ(runs, 0);
}

TEST_F(CommandLineTest, HelpShowsDefaults) {
    EXPECT_THAT(*run({"show", "--help"}), HasSubstr("--output FILE=-"));
    show().option("--color NAME", output, "Color").defaultText("by side");
    EXPECT_THAT(*run({"show", "--help"}), HasSubstr("--color NAME=by side"));
}

TEST_F(CommandLineTest, VersionIsReturned) {
    EXPECT_EQ(run({"--version"}), "1.2.3\n");
}

TEST_F(CommandLineTest, OptionsThatExcludeEachOtherAreAnError) {
    std::string a;
    std::string b;
    tool::Option first = show().option("--first A", a, "First");
    show().option("--second B", b, "Second").excludes(first);
    EXPECT_EQ(errorOf({"show", "wall.xml", "--first", "1"}), "");
    EXPECT_THAT(errorOf({"show", "wall.xml", "--first", "1", "--second", "2"}), HasSubstr("--first"));
}

TEST_F(CommandLineTest, OptionWithoutTheOneThatItNeedsIsAnError) {
    std::string a;
    std::string b;
    const tool::Option first = show().option("--first A", a, "First");
    show().option("--second B", b, "Second").needs(first);
    EXPECT_EQ(errorOf({"show", "wall.xml", "--first", "1", "--second", "2"}), "");
    EXPECT_THAT(errorOf({"show", "wall.xml", "--second", "2"}), HasSubstr("--first"));
}

TEST_F(CommandLineTest, CommandBelowACommandRuns) {
    Command make =
        line.root().addCommand({.name = "make", .summary = "Make", .example = "screens make dome"});
    make.requireCommand();
    std::string shape;
    make.addCommand({.name = "dome", .summary = "Dome", .example = "screens make dome"}).onRun([&] {
        shape = "dome";
    });
    EXPECT_EQ(run({"make", "dome"}), std::nullopt);
    EXPECT_EQ(shape, "dome");
    EXPECT_NE(errorOf({"make"}), "");
}

TEST_F(CommandLineTest, ActionGetsItsOptions) {
    struct Options {
        std::string name;
    };
    static std::string found;
    Command command =
        line.root().addCommand({.name = "find", .summary = "Find", .example = "screens find x"});
    Options& options = command.onRun<Options>([](const Options& given) { found = given.name; });
    command.argument("NAME", options.name, "Name");
    EXPECT_EQ(run({"find", "wall"}), std::nullopt);
    EXPECT_EQ(found, "wall");
}

TEST_F(CommandLineTest, FactsDescribeTheOptionsForACompletion) {
    EXPECT_EQ(show().name(), "show");
    EXPECT_EQ(show().summary(), "Show a screen");
    std::vector<OptionFacts> all = show().options();
    ASSERT_EQ(all.size(), 6U);
    EXPECT_THAT(all[0].names, ElementsAre("-h", "--help"));
    EXPECT_FALSE(all[0].takesValue);
    EXPECT_THAT(all[1].names, IsEmpty());
    EXPECT_EQ(all[1].valueName, "FILE");
    EXPECT_THAT(all[2].names, ElementsAre("-o", "--output"));
    EXPECT_EQ(all[2].description, "File to write");
    EXPECT_TRUE(all[2].takesValue);
    EXPECT_THAT(all[4].choices, ElementsAre("m", "mm"));
    EXPECT_THAT(all[5].names, ElementsAre("--json"));
    EXPECT_FALSE(all[5].takesValue);
    EXPECT_EQ(all[5].valueName, "");
}

}  // namespace
}  // namespace quarn::test
