#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/OutputFile.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnKit/Formats/Obj/Repair/ObjRepairer.h>
#include <QuarnKit/Formats/ScreenWriter.h>

#include "Base/Diagnostics.h"
#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"

namespace quarn::tool {

namespace {

struct ConvertOptions {
    std::string input;
    std::string output;
    std::optional<ScreenFormat> format;  // from the output's name if empty
    ObjOptions obj;
    std::optional<GridSize> grid;
    std::uint64_t maxMemory = defaultMemoryLimit();
};

// A screen, and the repairs of its OBJ text.
struct RepairedScreen {
    Screen screen;
    std::string name;  // of the text in notes
    ObjRepairs repairs;
};

void noteRepairs(const RepairedScreen& repaired) {
    for (const ObjRepairs::Tally& tally : repaired.repairs.tallies())
        writeNoteLine(withLocation(repaired.name, tally.firstLine, "repaired " + repairText(tally)));
}

// Reads the input, and repairs it if it is an OBJ text.
RepairedScreen readRepaired(const ConvertOptions& options) {
    RepairedScreen result;
    result.screen = openScreen(options.input, options.maxMemory, options.obj, [&](ObjSource& source) {
        RepairedObj repaired = repairObj(source.name, source.text);
        source.text = std::move(repaired.text);
        result.name = source.name;
        result.repairs = repaired.repairs;
    });
    return result;
}

ScreenFormat formatFor(const ConvertOptions& options) {
    if (options.format) return *options.format;
    const ScreenFormat format = formatByName(options.output, ScreenFormat::Xml);
    if (format != formatByName(options.output, ScreenFormat::Obj))
        throw Error({.found = "found the output " + quotedExcerpt(options.output),
                     .expected = "a name that ends with .obj or .xml, or --to"});
    return format;
}

void run(const ConvertOptions& options) {
    const ScreenFormat format = formatFor(options);
    const RepairedScreen repaired = readRepaired(options);
    // An input or output that is rejected gets no notes.
    OutputFile output(options.output, {options.input});
    noteRepairs(repaired);
    const Screen& screen = repaired.screen;
    if (format == ScreenFormat::Xml) {
        output.write(xmlTextOf(*screen.geometry));
    } else {
        const std::string text = objTextOf(screen, options.grid.value_or(GridSize()), options.maxMemory);
        ConsoleObserver observer;
        noteMeshStatus(options.output, screen, text, options.maxMemory, observer);
        output.write(text);
    }
    output.finish();
}

}  // namespace

void registerConvertCommand(Command& tool) {
    Command command =
        tool.addCommand({.name = "convert",
                         .summary = "Convert a screen between OBJ and XML, and repair OBJ files",
                         .example = "quarnscreen convert Samples/dome.xml -o dome.obj"});
    ConvertOptions& options = command.onRun(run);
    command.argument("INPUT FILE", options.input, "OBJ or STL file from any program, or XML file of a screen")
        .required();
    addOutputOption(command, options.output).required();
    command.choice("--to TEXT", options.format, {{"obj", ScreenFormat::Obj}, {"xml", ScreenFormat::Xml}},
                   "Output format; default from the file name");
    addObjOptions(command, options.obj);
    addGridOption(command, options.grid);
    addMemoryOption(command, options.maxMemory);
}

}  // namespace quarn::tool
