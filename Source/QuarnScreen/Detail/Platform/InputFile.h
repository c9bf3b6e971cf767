/// \file
/// Files to read.
#pragma once

#include <fstream>
#include <string>

namespace quarn::detail {

/// Opens a file by its path, whose name is the path's UTF-8 form whatever the locale. A directory does not open.
[[nodiscard]] bool openInputFile(std::ifstream& file, const std::wstring& path, std::ios::openmode mode);

}  // namespace quarn::detail
