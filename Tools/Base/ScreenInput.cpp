#include "Base/ScreenInput.h"

#include <set>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>

#include "Base/Diagnostics.h"
#include "Base/ErrorReport.h"
#include "Base/LogWarnings.h"
#include "Base/ShellQuote.h"

namespace quarn::tool {

namespace {

constexpr int kPositionDigits = 7;

// Files with a warning of several boundaries.
std::set<std::string>& warnedFiles() {
    static std::set<std::string> files;
    return files;
}

void warnOfSeveralBoundaries(const std::string& path) {
    if (!takeSeveralBoundaries() || !warnedFiles().insert(path).second) return;
    writeWarningLine(withLocation(path, 0,
                                  "the mesh has several boundaries, at holes, at gaps between its parts or "
                                  "at seams; only the first one is "
                                  "used, and UV does not work; to find them, try: " +
                                      remedyCommand({.kind = RemedyKind::CheckMesh, .file = path})));
}

std::string positionText(const Point<double, 3>& position) {
    std::string text;
    for (std::size_t i = 0; i < 3; ++i)
        text += (i == 0 ? "(" : ", ") + roundedNumberText(position[i], kPositionDigits);
    return text + ")";
}

}  // namespace

void ConsoleObserver::setStage(const std::string& stage) {
    progress.setStage(stage);
}

void ConsoleObserver::notify(const Notice& notice) {
    // The warning on the input states it.
    if (notice.name == "bad_boundary" && !warnedFiles().empty()) return;
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
    Screen screen = readScreen(path, maxMemory, objOptions, observer, prepare);
    warnOfSeveralBoundaries(path);
    return screen;
}

UnindexedScreen openUnindexedScreen(const std::string& path, std::uint64_t maxMemory,
                                    const ObjOptions& objOptions,
                                    const std::function<void(ObjSource&)>& prepare) {
    ConsoleObserver observer;
    UnindexedScreen screen = readUnindexedScreen(path, maxMemory, objOptions, observer, prepare);
    warnOfSeveralBoundaries(path);
    return screen;
}

void warnOfIgnoredCenter(const Screen& screen, CenterQuery query, const std::string& unit) {
    const auto center = ignoredCenterOf(*screen.geometry, query);
    if (!center) return;
    const std::string position = positionText(*center) + " " + unit;
    const std::string text =
        query == CenterQuery::CalibrationPoints
            ? "the positions are relative to the screen's center; add " + position + " to each"
            : "rays miss or hit wrong positions, because the cylinder's axis passes through " + position +
                  " and is not the Z axis; query its mesh, from quarnscreen convert " +
                  shellQuote(screen.file) +
                  " -o mesh.obj, or subtract that position from the rays and query a cylinder on the Z axis";
    writeWarningLine(withLocation(screen.file, 0, text));
}

void warnWithoutUV(const Screen& screen) {
    // The warning of several boundaries states it.
    if (warnedFiles().contains(screen.file)) return;
    if (screen.mesh && !screen.geometry->hasParameterization())
        writeWarningLine(withLocation(screen.file, 0, "the mesh has no usable UV, see quarnscreen info"));
}

}  // namespace quarn::tool
