/// \file
/// Screens from files.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <QuarnScreen/IScreenGeometry.h>

#include "ScreenTags.h"

namespace quarn {

/// A screen with what its file says about it.
struct Screen {
    std::string file;
    std::shared_ptr<IScreenGeometry> geometry;
    std::vector<Parameter> parameters = {};
};

/// Reads the first screen of the XML file \p path.
///
/// The numbers are checked before the screen gets them, as the screen would take text that is no number for
/// 0.
[[nodiscard]] Screen readScreen(const std::string& path, std::uint64_t maxMemory);

}  // namespace quarn
