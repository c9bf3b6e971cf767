/// \file
/// Options that commands share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <QuarnKit/Base/MemoryLimit.h>
#include <QuarnKit/Formats/GridMesh.h>
#include <QuarnKit/Formats/Obj/ObjSource.h>

#include "Rows/ResultWriter.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace quarn::tool {

/// Options of every command that reads a screen.
struct ScreenOptions {
    std::string screen;
    ObjOptions obj;
    std::string unit = "m";
    ResultFormat format = ResultFormat::Csv;
    std::uint64_t maxMemory = defaultMemoryLimit();  ///< In bytes.
    std::string output = "-";
};

/// One for each processor that the process may use.
[[nodiscard]] std::size_t defaultThreadCount();

/// Options of the commands that answer rows.
struct QueryOptions : ScreenOptions {
    bool areResultsRequired = false;
    std::size_t threads = defaultThreadCount();
};

/// Adds a command. \p example is a command line that works in the project's folder.
CLI::App& addCommand(CLI::App& tool, const std::string& name, const std::string& description,
                     const std::string& example);

/// Adds the argument SCREEN and the options. \p options has to outlive \p command.
void addScreenOptions(CLI::App& command, ScreenOptions& options);
void addQueryOptions(CLI::App& command, QueryOptions& options);

/// Adds the option --threads. \p threads has to outlive \p command.
void addThreadsOption(CLI::App& command, std::size_t& threads);

/// Adds the options --unit, --output, --max-memory, --grid, and those that say how an OBJ file lies in the world.
void addUnitOption(CLI::App& command, std::string& unit, const std::string& description);
CLI::Option& addOutputOption(CLI::App& command, std::string& path);
void addMemoryOption(CLI::App& command, std::uint64_t& maxMemory);
CLI::Option& addGridOption(CLI::App& command, GridSize& grid);
void addObjOptions(CLI::App& command, ObjOptions& options);

/// Those of addObjOptions() but --scale. \p suffix ends their names, and \p file says whose they are, where a command
/// has two of them.
void addObjAxisOptions(CLI::App& command, ObjOptions& options, const std::string& suffix = "",
                       const std::string& file = "OBJ");
void addObjScaleOption(CLI::App& command, ObjOptions& options, const std::string& suffix = "",
                       const std::string& file = "OBJ");

/// Adds an option for a whole number of at least 2.
void addCountOption(CLI::App& command, const std::string& name, int& count, const std::string& description);

/// Adds a CSV input as an option or argument.
CLI::Option& addCsvInput(CLI::App& command, const std::string& name, std::string& path,
                         const std::string& description);

}  // namespace quarn::tool
