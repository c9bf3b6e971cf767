/// \file
/// The commands of the tool. For main(). Their names, and those of their options, do not change.
#pragma once

#include "CommandLine/CommandLine.h"

namespace quarn::tool {

/// Each of these functions adds one command, with its options and its action, to the tool.
void registerInfoCommand(Command& tool);
void registerMapCommand(Command& tool);
void registerIntersectCommand(Command& tool);
void registerNearestCommand(Command& tool);
void registerClosestCommand(Command& tool);
void registerNormalCommand(Command& tool);
void registerChannelCommand(Command& tool);
void registerConvertCommand(Command& tool);
void registerRefineCommand(Command& tool);
void registerTransformCommand(Command& tool);
void registerCompareCommand(Command& tool);
void registerGridCommand(Command& tool);
void registerBoundaryCommand(Command& tool);
void registerPointsCommand(Command& tool);
void registerPlotCommand(Command& tool);
void registerCheckCommand(Command& tool);
void registerMakeCommand(Command& tool);
void registerCompletionCommand(Command& tool);

}  // namespace quarn::tool
