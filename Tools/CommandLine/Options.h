/// \file
/// Options that several commands share. Each function adds options to a command. The values that
/// the options set have to outlive its CommandLine; CommandLine::run() throws an Error for an
/// invalid text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QuarnKit/Formats/GridMesh.h>

#include "CommandLine/CommandLine.h"
#include "Rows/PointRows.h"
#include "Rows/QueryOptions.h"

namespace quarn::tool {

/// Adds the argument SCREEN, and the options of an OBJ file and of the unit.
void addScreenInput(Command& command, ScreenOptions& options);

/// Adds the argument SCREEN, and all options of a command that reads a screen.
void addScreenOptions(Command& command, ScreenOptions& options);

/// Adds the options of addScreenOptions() and --require.
void addQueryOptions(Command& command, QueryOptions& options);

/// Adds the options of addQueryOptions(), --threads and the argument POINTS.
void addPointOptions(Command& command, PointOptions& options);

/// Adds --forward, --up and --scale.
void addObjOptions(Command& command, ObjOptions& options);

/// Adds --forward and --up.
/// \param suffix the end of their names, for a command that has them twice
/// \param file the OBJ file that they apply to, as the help names it
void addObjAxisOptions(Command& command, ObjOptions& options, const std::string& suffix = "",
                       const std::string& file = "OBJ");

/// Adds --scale; the parameters are those of addObjAxisOptions().
void addObjScaleOption(Command& command, ObjOptions& options, const std::string& suffix = "",
                       const std::string& file = "OBJ");

/// Adds --object; the parameters are those of addObjAxisOptions().
void addObjectOption(Command& command, ObjOptions& options, const std::string& suffix = "",
                     const std::string& file = "OBJ");

/// Adds --repair, which sets the policy of all \p targets.
void addRepairFlag(Command& command, const std::vector<ObjOptions*>& targets);

void addUnitOption(Command& command, std::string& unit, const std::string& description);
void addJsonFlag(Command& command, ResultFormat& format);
void addThreadsOption(Command& command, std::size_t& threads);
void addMemoryOption(Command& command, std::uint64_t& maxMemory);
Option addOutputOption(
    Command& command, std::string& path,
    const std::string& description = "File to write, replaced atomically; - is the standard output");

/// Adds --grid. The help shows GridSize() as the default.
/// \param grid stays empty if the option is not given
void addGridOption(Command& command, std::optional<GridSize>& grid);

/// Adds an option for a whole number of at least 2, with the default \p count.
void addCountOption(Command& command, const std::string& name, int& count, const std::string& description);

}  // namespace quarn::tool
