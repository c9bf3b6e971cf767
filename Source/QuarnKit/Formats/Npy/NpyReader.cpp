#include "NpyReader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>

#include <QuarnKit/Base/Error.h>

namespace quarn {

namespace {

// NumPy writes less than 200 bytes. Without a limit, a hostile length would fill the memory.
constexpr std::uint64_t kMaxHeaderBytes = 65535;

Error shortError(const std::string& place) {
    return Error({.found = "found the end of the input " + place, .expected = "the rest of a NumPy array"});
}

// Reads until the buffer is full or the input ends, and returns the number of bytes.
std::size_t readFully(InputStream& input, std::span<char> buffer) {
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        const std::size_t count = input.read(buffer.data() + filled, buffer.size() - filled);
        if (count == 0) break;
        filled += count;
    }
    return filled;
}

void readHeaderBytes(InputStream& input, std::span<char> buffer) {
    if (readFully(input, buffer) < buffer.size()) throw shortError("in its header");
}

template <class Unsigned>
Unsigned littleEndian(const char* bytes) {
    Unsigned value = 0;
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i)
        value |=
            static_cast<Unsigned>(static_cast<Unsigned>(static_cast<unsigned char>(bytes[i])) << (8 * i));
    return value;
}

double bigEndianNumber(const char* bytes) {
    std::array<char, sizeof(double)> reversed{};
    std::reverse_copy(bytes, bytes + reversed.size(), reversed.begin());
    return std::bit_cast<double>(littleEndian<std::uint64_t>(reversed.data()));
}

double numberAt(const char* bytes, NpyNumber type) {
    if (type == NpyNumber::Float32) return std::bit_cast<float>(littleEndian<std::uint32_t>(bytes));
    if (type == NpyNumber::Float64BigEndian) return bigEndianNumber(bytes);
    return std::bit_cast<double>(littleEndian<std::uint64_t>(bytes));
}

// The length of the header follows the version, in two bytes or four.
std::uint64_t readHeaderLength(InputStream& input) {
    std::array<char, 2> version{};
    readHeaderBytes(input, version);
    if (version[0] < 1 || version[0] > 3 || version[1] != 0)
        throw Error({.found = "found the version " + std::to_string(static_cast<unsigned char>(version[0])) +
                              "." + std::to_string(static_cast<unsigned char>(version[1])) +
                              " of the NumPy array format",
                     .expected = "1.0, 2.0 or 3.0"});
    std::array<char, 4> length{};
    readHeaderBytes(input, std::span(length).first(version[0] == 1 ? 2 : 4));
    return littleEndian<std::uint32_t>(length.data());
}

}  // namespace

NpyReader::NpyReader(InputStream source) : input(std::move(source)) {
    try {
        readHeader();
        requireExactSize();
    } catch (const Error& error) {
        throw error.at(name(), 0);
    }
}

void NpyReader::readHeader() {
    if (!input.startsWith(kNpyMagic))
        throw Error({.found = "found another format", .expected = "a NumPy array (.npy)"});
    std::array<char, kNpyMagic.size()> magic{};
    readHeaderBytes(input, magic);
    const std::uint64_t length = readHeaderLength(input);
    if (length > kMaxHeaderBytes)
        throw Error({.found = "found a NumPy header of " + std::to_string(length) + " bytes",
                     .expected = "at most " + std::to_string(kMaxHeaderBytes)});
    std::string text(length, '\0');
    readHeaderBytes(input, text);
    arrayHeader = parseNpyHeader(text);
    // A single row or column is stored in the same way in both orders.
    if (arrayHeader.rowCount <= 1 || arrayHeader.columnCount == 1) arrayHeader.order = NpyOrder::RowMajor;
}

void NpyReader::requireExactSize() const {
    const auto rest = input.rest();
    if (!rest && arrayHeader.order == NpyOrder::ColumnMajor)
        throw Error({.found = "found a NumPy array in Fortran order in a stream",
                     .expected = "a file, or C order (numpy.ascontiguousarray)"});
    if (rest && rest->size != arrayHeader.dataBytes())
        throw Error({.found = "found " + std::to_string(rest->size) + " bytes after the NumPy header",
                     .expected = std::to_string(arrayHeader.dataBytes()) + " (" +
                                 std::to_string(arrayHeader.rowCount) + " x " +
                                 std::to_string(arrayHeader.columnCount) + " numbers of " +
                                 std::to_string(arrayHeader.numberBytes()) + " bytes)"});
}

std::uint64_t NpyReader::next(std::uint64_t maxRows, std::vector<double>& numbers) {
    if (rowsRead == 0 && arrayHeader.order == NpyOrder::ColumnMajor) dataOffset = input.rest()->begin;
    std::uint64_t rowCount = std::min(maxRows, arrayHeader.rowCount - rowsRead);
    if (rowCount == 0) {
        requireEnd();
        numbers.clear();
        return 0;
    }
    bytes.resize(rowCount * arrayHeader.rowBytes());
    if (arrayHeader.order == NpyOrder::ColumnMajor)
        readColumns(rowCount);
    else
        rowCount = readRows(rowCount);
    convert(rowCount, numbers);
    rowsRead += rowCount;
    return rowCount;
}

void NpyReader::requireEnd() {
    char byte = 0;
    if (arrayHeader.order == NpyOrder::RowMajor && input.read(&byte, 1) > 0)
        throw Error({.found = "found bytes after the last row of the NumPy array",
                     .expected = "the end of the input",
                     .file = name()});
}

// Further rows are read only if they are available, so that a writer who waits for results gets
// those of the rows that it wrote.
std::uint64_t NpyReader::readRows(std::uint64_t maxRows) {
    const std::size_t rowBytes = arrayHeader.rowBytes();
    std::size_t filled = 0;
    while (filled < maxRows * rowBytes && (filled < rowBytes || input.isReady())) {
        const std::size_t count = input.read(bytes.data() + filled, maxRows * rowBytes - filled);
        if (count == 0) break;
        filled += count;
    }
    const std::size_t partial = filled % rowBytes;
    const std::span<char> missing(bytes.data() + filled, partial == 0 ? 0 : rowBytes - partial);
    if (filled == 0 || readFully(input, missing) < missing.size())
        throw shortError("after " + std::to_string(rowsRead + filled / rowBytes) + " of " +
                         std::to_string(arrayHeader.rowCount) + " rows")
            .at(name(), 0);
    return (filled + missing.size()) / rowBytes;
}

// Appends the parts of the columns, one after the other.
void NpyReader::readColumns(std::uint64_t rowCount) {
    const std::uint64_t size = arrayHeader.numberBytes();
    for (std::uint64_t column = 0; column < arrayHeader.columnCount; ++column)
        input.readAt(dataOffset + (column * arrayHeader.rowCount + rowsRead) * size,
                     bytes.data() + column * rowCount * size, rowCount * size);
}

void NpyReader::convert(std::uint64_t rowCount, std::vector<double>& numbers) const {
    const std::uint64_t columns = arrayHeader.columnCount;
    const bool isByColumns = arrayHeader.order == NpyOrder::ColumnMajor;
    const std::uint64_t rowStep = isByColumns ? 1 : columns;
    const std::uint64_t columnStep = isByColumns ? rowCount : 1;
    numbers.resize(rowCount * columns);
    auto number = numbers.begin();
    for (std::uint64_t row = 0; row < rowCount; ++row)
        for (std::uint64_t column = 0; column < columns; ++column)
            *number++ =
                numberAt(bytes.data() + (row * rowStep + column * columnStep) * arrayHeader.numberBytes(),
                         arrayHeader.number);
}

}  // namespace quarn
