/// \file
/// The bytes of a screen's file, and what format they are in.
#pragma once

#include <cstdint>
#include <string>

namespace quarn {

enum class ScreenFormat { Xml, Obj, Stl };

struct ScreenFile {
    std::string path;
    std::string text;
    ScreenFormat format = ScreenFormat::Xml;
};

/// Reads the file \p path. Its format is told by its content, whatever its name is: where it does not begin with a tag,
/// STL where it begins like such a file, and OBJ where a line begins with a keyword of OBJ; else XML.
///
/// Stops where reading it could need more than \p maxMemory bytes.
[[nodiscard]] ScreenFile readScreenFile(const std::string& path, std::uint64_t maxMemory);

}  // namespace quarn
