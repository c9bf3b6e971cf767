#include <fcntl.h>
#include <unistd.h>

#include <QuarnKit/Base/OutputFile.h>

#include "Base/ErrorReport.h"
#include "Base/LogOutput.h"
#include "Base/TerminationSignals.h"
#include "CommandLine/CommandLine.h"
#include "Commands/Commands.h"

namespace {

// A caller may have closed a standard stream. The next file to be opened would get its number, and
// messages would be written to that file. Open /dev/null instead, so that using the stream still
// fails.
void reserveStandardStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(descriptor, F_GETFD) == -1)
            ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

void writeToStandardOutput(const std::string& text) {
    quarn::OutputFile output("-", {});
    output.write(text);
    output.finish();
}

void runTool(int argc, const char* const* argv) {
    quarn::tool::CommandLine commandLine(
        {.name = "quarnscreen",
         .summary = "Models of physical display screens: queries a screen read from a file.",
         .details =
             "Exit codes: 0 success, 1 a required result is missing or a check reported findings, 2 bad "
             "input or usage, 3 the system failed.",
         .example = "quarnscreen info Samples/flat-wall.xml"},
        "quarnscreen " QUARN_VERSION);
    quarn::tool::Command tool = commandLine.root();
    tool.requireCommand();
    quarn::tool::registerInfoCommand(tool);
    quarn::tool::registerMapCommand(tool);
    quarn::tool::registerIntersectCommand(tool);
    quarn::tool::registerNearestCommand(tool);
    quarn::tool::registerClosestCommand(tool);
    quarn::tool::registerNormalCommand(tool);
    quarn::tool::registerChannelCommand(tool);
    quarn::tool::registerGridCommand(tool);
    quarn::tool::registerBoundaryCommand(tool);
    quarn::tool::registerPointsCommand(tool);
    quarn::tool::registerPlotCommand(tool);
    quarn::tool::registerCheckCommand(tool);
    quarn::tool::registerMakeCommand(tool);
    quarn::tool::registerConvertCommand(tool);
    quarn::tool::registerRefineCommand(tool);
    quarn::tool::registerTransformCommand(tool);
    quarn::tool::registerCompareCommand(tool);
    quarn::tool::registerCompletionCommand(tool);
    if (const auto text = commandLine.run(argc, argv)) writeToStandardOutput(*text);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        reserveStandardStreams();
        quarn::tool::cleanUpOnTermination();
        quarn::tool::installLogOutput();
        runTool(argc, argv);
        return static_cast<int>(quarn::tool::ExitCode::Success);
    } catch (...) {
        return static_cast<int>(quarn::tool::reportCurrentError());
    }
}
