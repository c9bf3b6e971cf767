#include <functional>
#include <utility>
#include <variant>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/OutputFile.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnKit/Formats/Obj/Edit/ObjTextEdit.h>
#include <QuarnKit/Formats/Obj/Parts/ObjCompaction.h>
#include <QuarnKit/Formats/ScreenWriter.h>

#include "Base/Diagnostics.h"
#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "CommandLine/UnitOptions.h"
#include "Commands/Commands.h"

namespace quarn::tool {

namespace {

constexpr const char* kAutoOrigin = "auto";

constexpr const char* kDetails =
    "Here v runs downward: 0 at the top of the screen, 1 at the bottom. Many programs count it from the\n"
    "bottom. For them, or for their files, --v up makes each v 1 - v.\n"
    "Positions are stored in single precision, which rounds coordinates of several kilometers to\n"
    "millimeters and more. --origin moves the mesh before that, and reports by how much.";

struct ConvertOptions {
    std::string input;
    std::string output;
    std::optional<ScreenFormat> format;  // from the output's name if empty
    ObjOptions obj = {.repair = RepairPolicy::Repair};
    std::optional<GridSize> grid;
    std::uint64_t maxMemory = defaultMemoryLimit();
};

// Some objects of a file get a text of their own, without the data of the others.
std::function<void(ObjSource&)> preparationOf(const ConvertOptions& options) {
    if (options.obj.objects.empty()) return {};
    return [](ObjSource& source) { removeUnusedObjData(source); };
}

void noteOrigin(const MeshSource& mesh) {
    const Point<double, 3> inScreen = originInScreen(mesh.origin, mesh.frame);
    std::string text = "the origin was not moved";
    if (mesh.origin != Point<double, 3>())
        text = "subtracted " + coordinatesText(mesh.origin) + " from the coordinates of the file; add " +
               (inScreen == mesh.origin ? "them" : coordinatesText(inScreen)) +
               " to positions on the screen to undo that";
    writeNoteLine(withLocation(mesh.text.name, 0, text));
}

void refuseEditOfAnalyticScreen(const ConvertOptions& options, ScreenFormat format) {
    if (options.obj.origin)
        throw Error({.found = "found --origin for an analytic screen",
                     .expected = "it with a mesh only",
                     .file = options.input});
    if (format == ScreenFormat::Xml && options.obj.vDirection == VDirection::Upward)
        throw Error({.found = "found --v up for an analytic screen in XML, where v runs downward",
                     .expected = "an OBJ file as output",
                     .file = options.input});
}

std::string objTextOfMesh(const UnindexedMesh& mesh, const ConvertOptions& options) {
    if (options.obj.origin) noteOrigin(mesh.source);
    std::string text = objTextOf(mesh);
    ConsoleObserver observer;
    noteMeshStatus(options.output, mesh, text, options.maxMemory, observer);
    return text;
}

std::string objTextOfAnalyticScreen(const Screen& screen, const ConvertOptions& options) {
    refuseEditOfAnalyticScreen(options, ScreenFormat::Obj);
    std::string text =
        objTextOf(screen, gridFor(screen, options.grid), options.obj.vDirection, options.maxMemory);
    ConsoleObserver observer;
    return verifyGeneratedText(options.output, std::move(text), options.maxMemory, observer);
}

// A mesh is always one of an OBJ text, since an STL text is repaired to one.
std::string objTextFor(const ConvertOptions& options) {
    const UnindexedScreen input =
        openUnindexedScreen(options.input, options.maxMemory, options.obj, preparationOf(options));
    if (const auto* const mesh = std::get_if<UnindexedMesh>(&input)) return objTextOfMesh(*mesh, options);
    return objTextOfAnalyticScreen(std::get<Screen>(input), options);
}

std::string xmlTextFor(const ConvertOptions& options) {
    const Screen screen = openScreen(options.input, options.maxMemory, options.obj, preparationOf(options));
    if (!screen.mesh) refuseEditOfAnalyticScreen(options, ScreenFormat::Xml);
    if (options.obj.origin) noteOrigin(*screen.mesh);
    return xmlTextOf(*screen.geometry);
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
    refuseInputAsOutput(options.output, {options.input});
    const std::string text = format == ScreenFormat::Xml ? xmlTextFor(options) : objTextFor(options);
    OutputFile output(options.output, {options.input});
    output.write(text);
    output.finish();
}

}  // namespace

void registerConvertCommand(Command& tool) {
    Command command =
        tool.addCommand({.name = "convert",
                         .summary = "Convert a screen between OBJ and XML, and repair OBJ files",
                         .details = kDetails,
                         .example = "quarnscreen convert Samples/dome.xml -o dome.obj"});
    ConvertOptions& options = command.onRun(run);
    command.argument("INPUT FILE", options.input, "OBJ or STL file from any program, or XML file of a screen")
        .required();
    addOutputOption(command, options.output).required();
    command.choice("--to TEXT", options.format, {{"obj", ScreenFormat::Obj}, {"xml", ScreenFormat::Xml}},
                   "Output format; default from the file name");
    addObjOptions(command, options.obj);
    addObjectOption(command, options.obj);
    addGridOption(command, options.grid);
    addVDirectionOption(command, options.obj.vDirection,
                        "Direction of v in the other program: up flips v, in a mesh that is read or that an "
                        "analytic screen becomes");
    command.option(
        "--origin X,Y,Z|auto",
        [&options](const std::string& text) {
            options.obj.origin = ObjOrigin();
            if (text != kAutoOrigin) options.obj.origin->position = coordinatesFrom("--origin", text);
        },
        "Subtract this position from all coordinates of a mesh, in double precision; auto takes a round "
        "position near its middle");
    addMemoryOption(command, options.maxMemory);
}

}  // namespace quarn::tool
