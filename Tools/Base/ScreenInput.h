/// \file
/// Screens from files, with progress and warnings on standard error. For all commands that read a
/// screen.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <QuarnKit/Base/Observer.h>
#include <QuarnKit/Check/CenterEffect.h>
#include <QuarnKit/Formats/ScreenReader.h>

#include "Base/ProgressLine.h"

namespace quarn::tool {

/// Writes notices as lines on standard error, and shows the stage on a terminal.
class ConsoleObserver : public Observer {
public:
    void setStage(const std::string& stage) override;
    void notify(const Notice& notice) override;

private:
    ProgressLine progress;
};

/// Reads a screen as quarn::readScreen() does, and shows its notices and stages. Writes a warning
/// for a mesh with several boundaries, once for each file.
/// \throws Error like quarn::readScreen()
[[nodiscard]] Screen openScreen(const std::string& path, std::uint64_t maxMemory,
                                const ObjOptions& objOptions,
                                const std::function<void(ObjSource&)>& prepare = {});

/// Reads a screen as quarn::readUnindexedScreen() does, and shows the same as openScreen().
/// \throws Error like quarn::readUnindexedScreen()
[[nodiscard]] UnindexedScreen openUnindexedScreen(const std::string& path, std::uint64_t maxMemory,
                                                  const ObjOptions& objOptions,
                                                  const std::function<void(ObjSource&)>& prepare = {});

/// Writes a warning with a remedy if a query does not use the center of a screen.
/// \param unit unit of the center
void warnOfIgnoredCenter(const Screen& screen, CenterQuery query, const std::string& unit);

/// Writes a warning if a mesh has no UV, for commands that need it, unless openScreen() warned of
/// several boundaries.
void warnWithoutUV(const Screen& screen);

}  // namespace quarn::tool
