#include "Base/ScreenInput.h"
#include <QuarnKit/Base/Error.h>

#include "Base/Diagnostics.h"
#include "Base/ToolError.h"

namespace quarn::tool {

void ConsoleObserver::setStage(const std::string& stage) {
    progress.setStage(stage);
}

void ConsoleObserver::notify(const Notice& notice) {
    const std::string command = remedyCommand(notice.remedy);
    const std::string line =
        withLocation(notice.file, notice.line, notice.text + (command.empty() ? "" : "; try: " + command));
    if (notice.level == NoticeLevel::Warning)
        writeWarningLine(line);
    else
        writeNoteLine(line);
}

Screen openScreen(const std::string& path, std::uint64_t maxMemory, const ObjOptions& objOptions,
                  const std::function<void(ObjSource&)>& prepare) {
    ConsoleObserver observer;
    return readScreen(path, maxMemory, objOptions, observer, prepare);
}

void warnWithoutUV(const Screen& screen) {
    if (screen.mesh && !screen.geometry->hasParameterization())
        writeWarningLine(withLocation(screen.file, 0, "the mesh has no usable UV, see quarnscreen info"));
}

}  // namespace quarn::tool
