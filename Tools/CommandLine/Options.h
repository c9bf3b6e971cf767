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

/// Explains the input rows of a command, for its help.
inline constexpr const char* kRowDetails =
    "A header names the columns of the CSV, in any order; its further columns follow those of the "
    "result. Without\na header, rows contain only the numbers, in this order. Commas, semicolons, tabs or "
    "blanks separate cells.\nA NumPy array (.npy) of floats has the numbers as its columns, in this "
    "order; a row of NaN alone is an empty row.";

/// Adds the argument SCREEN, and the options of an OBJ file and of the unit.
void addScreenInput(Command& command, ScreenOptions& options);

/// Adds the argument SCREEN, and all options of a command that reads a screen.
/// \return the flag --json
Option addScreenOptions(Command& command, ScreenOptions& options);

/// Adds the options of addScreenOptions() and --npy, for a command that writes rows.
void addResultOptions(Command& command, ScreenOptions& options);

/// Adds the options of addResultOptions() and --require.
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
Option addJsonFlag(Command& command, ResultFormat& format);
void addThreadsOption(Command& command, std::size_t& threads);
void addMemoryOption(Command& command, std::uint64_t& maxMemory);
Option addOutputOption(
    Command& command, std::string& path,
    const std::string& description = "File to write, replaced atomically; - is the standard output");

/// Adds --grid. The help shows GridSize() as the default.
/// \param grid stays empty if the option is not given
void addGridOption(Command& command, std::optional<GridSize>& grid);

/// Adds --v.
void addVDirectionOption(Command& command, VDirection& direction, const std::string& description);
/// Returns the grid of the option, or the default, for the mesh of a screen.
/// \throws Error that names --grid if it is too coarse for the screen
[[nodiscard]] GridSize gridFor(const Screen& screen, const std::optional<GridSize>& grid);

/// The valid values of an option for a whole number.
struct CountRange {
    int min;
    int max;
};

/// Adds an option for a whole number, with the default \p count.
void addNumberOption(Command& command, const std::string& name, int& count, const CountRange& range,
                     const std::string& description);

/// Adds an option for a whole number of at least 2, with the default \p count.
void addCountOption(Command& command, const std::string& name, int& count, const std::string& description);

}  // namespace quarn::tool
