#include "InputFile.h"

#include <filesystem>
#include <system_error>

#include <Common/TextConversion.h>

namespace quarn::detail {

bool openInputFile(std::ifstream& file, const std::wstring& path, std::ios::openmode mode) {
    const std::string name = toUtf8(path);
    std::error_code ignored;
    if (std::filesystem::is_directory(name, ignored)) return false;
    file.open(name, mode);
    return file.is_open();
}

}  // namespace quarn::detail
