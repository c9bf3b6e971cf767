/// \file
/// Reads the bytes of a screen's file and detects their format.
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

/// Reads the file \p path. Its contents determine the format, not its name: XML if it begins with a
/// tag, or else STL if it begins like an STL file, or else OBJ if a line begins with a keyword of
/// OBJ, or else XML.
///
/// Throws an Error if reading it could need more than \p maxMemory bytes.
[[nodiscard]] ScreenFile readScreenFile(const std::string& path, std::uint64_t maxMemory);

}  // namespace quarn
