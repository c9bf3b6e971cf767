/// \file
/// STL screens from files that nobody vouches for.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <QuarnScreen/STLScreen.h>

namespace quarn {

struct StlMesh {
    std::shared_ptr<STLScreen> screen;
    std::uint64_t triangleCount = 0;
};

/// Loads a binary STL text into the library's screen.
///
/// It is looked through first. Stops with a Error where there is an StlDefect.
/// \param file the file that holds the text
/// \param name what error lines call the text
[[nodiscard]] StlMesh loadStl(const std::string& file, const std::string& name, std::string text,
                              std::uint64_t maxMemory);

}  // namespace quarn
