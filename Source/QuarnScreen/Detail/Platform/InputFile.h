/// \file
/// Opening of input files.
#pragma once

#include <fstream>
#include <string>

namespace quarn::detail {

/// Opens a file by its path. The file name is the UTF-8 form of the path, regardless of the locale.
/// \return false if the file cannot be opened, or for a directory
[[nodiscard]] bool openInputFile(std::ifstream& file, const std::wstring& path, std::ios::openmode mode);

}  // namespace quarn::detail
