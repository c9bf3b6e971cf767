/// \file
/// The commands of the tool. Their names are for good.
#pragma once

namespace CLI {
class App;
}  // namespace CLI

namespace quarn::tool {

/// Each of these adds one command, with its options and what it does, to the tool.
void registerInfoCommand(CLI::App& tool);
void registerMapCommand(CLI::App& tool);
void registerIntersectCommand(CLI::App& tool);
void registerNearestCommand(CLI::App& tool);
void registerClosestCommand(CLI::App& tool);
void registerNormalCommand(CLI::App& tool);
void registerChannelCommand(CLI::App& tool);
void registerConvertCommand(CLI::App& tool);
void registerRefineCommand(CLI::App& tool);
void registerTransformCommand(CLI::App& tool);
void registerCompareCommand(CLI::App& tool);
void registerGridCommand(CLI::App& tool);
void registerBoundaryCommand(CLI::App& tool);
void registerPointsCommand(CLI::App& tool);
void registerPlotCommand(CLI::App& tool);
void registerCheckCommand(CLI::App& tool);
void registerMakeCommand(CLI::App& tool);
void registerCompletionCommand(CLI::App& tool);

}  // namespace quarn::tool
