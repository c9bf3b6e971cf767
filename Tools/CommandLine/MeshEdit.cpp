#include "CommandLine/MeshEdit.h"

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/OutputFile.h>
#include <QuarnKit/Formats/Obj/MeshDocument.h>
#include <QuarnKit/Formats/ScreenWriter.h>

#include "Base/ScreenInput.h"

namespace quarn::tool {

namespace {

// Shows the stages alone, for a mesh whose status the warning on its input states.
class StageObserver : public ConsoleObserver {
public:
    void notify(const Notice& /*notice*/) override {}
};

}  // namespace

void addMeshEditOptions(Command& command, MeshEditOptions& options) {
    command.argument("FILE FILE", options.input, "OBJ or STL file, or XML file of a mesh").required();
    addOutputOption(
        command, options.output,
        "File to write, replaced atomically: XML if its name ends with .xml, otherwise OBJ; - is the "
        "standard output");
    addObjectOption(command, options.obj);
    addRepairFlag(command, {&options.obj});
    addUnitOption(command, options.unit,
                  "Unit of the lengths in the file, to which all others are converted");
    addMemoryOption(command, options.maxMemory);
}

bool writesXml(const MeshEditOptions& options) {
    return formatByName(options.output, ScreenFormat::Obj) == ScreenFormat::Xml;
}

MeshScreen& meshOf(const Screen& screen) {
    auto* mesh = dynamic_cast<MeshScreen*>(screen.geometry.get());
    if (mesh == nullptr)
        throw Error({.found = "found an analytic screen, " + screen.geometry->getType(),
                     .expected = "a mesh",
                     .file = screen.file,
                     .remedy = {.kind = RemedyKind::ConvertToObj, .file = screen.file}});
    return *mesh;
}

void writeMesh(const std::vector<Triangle>& triangles, const std::string& comment,
               const MeshEditOptions& options) {
    OutputFile output(options.output, {options.input});
    const std::string text = objTextOf(meshDocumentOf(triangles), comment);
    ConsoleObserver observer;
    StageObserver stageObserver;
    Observer& used = isWarnedOfBoundaries(options.input) ? stageObserver : observer;
    const auto screen = loadGeneratedText(options.output, text, options.maxMemory, used);
    output.write(writesXml(options) ? xmlTextOf(*screen) : text);
    output.finish();
}

}  // namespace quarn::tool
