#include "NpyWriter.h"

#include <bit>

#include <QuarnKit/Formats/Npy/NpyHeader.h>

namespace quarn {

namespace {

constexpr int kBitsPerByte = 8;

void appendLittleEndian(std::string& bytes, double number) {
    auto bits = std::bit_cast<std::uint64_t>(number);
    for (std::size_t i = 0; i < sizeof(bits); ++i) {
        bytes += static_cast<char>(static_cast<unsigned char>(bits));
        bits >>= kBitsPerByte;
    }
}

}  // namespace

NpyWriter::NpyWriter(OutputFile& output, std::uint64_t columns) : out(output), columnCount(columns) {
    out.write(npyBeginning(0, columnCount));
}

void NpyWriter::write(std::span<const double> numbers) {
    bytes.clear();
    for (const double number : numbers) appendLittleEndian(bytes, number);
    out.write(bytes);
    numberCount += numbers.size();
}

void NpyWriter::finish() {
    out.overwriteBeginning(npyBeginning(numberCount / columnCount, columnCount));
    out.finish();
}

}  // namespace quarn
