/// \file
/// Reads the text of a screen's file and detects its format.
#pragma once

#include <cstdint>
#include <string>

#include "Kind/FileKind.h"

namespace quarn {

struct ScreenFile {
    std::string path;
    std::string text;
    ScreenFormat format = ScreenFormat::Xml;
};

/// Reads the file \p path. fileKindOf() determines the format. UTF-16 becomes UTF-8, except in XML,
/// which declares its encoding.
///
/// Throws an Error that names the kind of a file without a screen, and one if reading it could need
/// more than \p maxMemory bytes.
[[nodiscard]] ScreenFile readScreenFile(const std::string& path, std::uint64_t maxMemory);

}  // namespace quarn
