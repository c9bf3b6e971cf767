#include <optional>
#include <string>

#include <QuarnKit/Base/OutputFile.h>

#include "Commands/Commands.h"
#include "Completion/ShellCompletion.h"

namespace quarn::tool {

namespace {

using ScriptFor = std::string (*)(const Command& tool);

struct CompletionOptions {
    std::string shell;
    std::optional<Command> tool;
};

ScriptFor scriptFor(const std::string& shell) {
    if (shell == "zsh") return zshCompletion;
    return shell == "fish" ? fishCompletion : bashCompletion;
}

void run(const CompletionOptions& options) {
    OutputFile output("-", {});
    output.write(scriptFor(options.shell)(*options.tool));
    output.finish();
}

}  // namespace

void registerCompletionCommand(Command& tool) {
    Command command = tool.addCommand({.name = "completion",
                                       .summary = "Write the completion script of a shell",
                                       .example = "source <(quarnscreen completion bash)"});
    CompletionOptions& options = command.onRun(run);
    options.tool = tool;
    command.argument("SHELL", options.shell, "Shell that the script is for")
        .choices({"bash", "zsh", "fish"})
        .required();
}

}  // namespace quarn::tool
