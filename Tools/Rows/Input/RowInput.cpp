#include "Rows/Input/RowInput.h"

#include <QuarnKit/Formats/Npy/NpyHeader.h>

#include "Rows/Input/CsvRowInput.h"
#include "Rows/Input/NpyRowInput.h"

namespace quarn::tool {

std::unique_ptr<RowInput> openRowInput(InputStream source, const InputColumns& columns,
                                       const std::string& unit, std::size_t blockBytes) {
    if (source.startsWith(kNpyMagic))
        return std::make_unique<NpyRowInput>(std::move(source), columns, blockBytes);
    return std::make_unique<CsvRowInput>(std::move(source), columns, unit, blockBytes);
}

}  // namespace quarn::tool
