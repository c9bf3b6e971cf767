/// \file
/// The direction of v.
#pragma once

namespace quarn {

/// Direction in which v grows, as the viewer sees it. That of all screens is downward.
enum class VDirection { Downward, Upward };

}  // namespace quarn
