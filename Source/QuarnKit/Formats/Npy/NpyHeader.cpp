#include "NpyHeader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <vector>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/PrintableText.h>

namespace quarn {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::size_t kMaxDimensions = 2;
// A reader needs a row as a whole. Without a limit, a hostile shape would fill the memory.
constexpr std::uint64_t kMaxColumns = 1000000;

Error headerError(std::string_view text) {
    return Error({.found = "found the NumPy header " + quotedExcerpt(text),
                  .expected = "a dictionary with descr, fortran_order and shape"});
}

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

bool takeCharacter(std::string_view& text, char wanted) {
    text = withoutBlanks(text);
    if (!text.starts_with(wanted)) return false;
    text.remove_prefix(1);
    return true;
}

// The length of a value of a Python dictionary, up to the comma or brace after it.
std::size_t valueLength(std::string_view text) {
    std::size_t depth = 0;
    char quote = '\0';
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (quote != '\0') {
            if (character == quote) quote = '\0';
        } else if (character == '\'' || character == '"') {
            quote = character;
        } else if (character == '(' || character == '[') {
            ++depth;
        } else if (depth > 0) {
            if (character == ')' || character == ']') --depth;
        } else if (character == ',' || character == ':' || character == '}') {
            return i;
        }
    }
    return text.size();
}

std::string_view takeValue(std::string_view& text) {
    const std::size_t length = valueLength(text);
    const std::string_view value = withoutBlanks(text.substr(0, length));
    text.remove_prefix(length);
    return value;
}

std::string_view withoutQuotes(std::string_view value) {
    const bool isQuoted =
        value.size() > 1 && (value.front() == '\'' || value.front() == '"') && value.front() == value.back();
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

struct Entries {
    std::optional<std::string_view> number;
    std::optional<std::string_view> order;
    std::optional<std::string_view> shape;
};

std::optional<std::string_view>* entryOf(Entries& entries, std::string_view key) {
    const std::string_view name = withoutQuotes(key);
    if (name.size() == key.size()) return nullptr;
    if (name == "descr") return &entries.number;
    if (name == "fortran_order") return &entries.order;
    return name == "shape" ? &entries.shape : nullptr;
}

Entries entriesOf(std::string_view header) {
    std::string_view text = header;
    Entries entries;
    if (!takeCharacter(text, '{')) throw headerError(header);
    while (!takeCharacter(text, '}')) {
        std::optional<std::string_view>* const entry = entryOf(entries, takeValue(text));
        if (entry == nullptr || entry->has_value() || !takeCharacter(text, ':')) throw headerError(header);
        *entry = takeValue(text);
        if (!takeCharacter(text, ',') && !text.starts_with('}')) throw headerError(header);
    }
    if (!withoutBlanks(text).empty() || !entries.number || !entries.order || !entries.shape)
        throw headerError(header);
    return entries;
}

NpyNumber numberOf(std::string_view value) {
    const std::string_view name = withoutQuotes(value);
    if (name.size() < value.size()) {
        if (name == "<f8") return NpyNumber::Float64;
        if (name == ">f8") return NpyNumber::Float64BigEndian;
        if (name == "<f4") return NpyNumber::Float32;
    }
    throw Error({.found = "found a NumPy array of " + quotedExcerpt(name),
                 .expected = R"(floats: "<f8" (numpy.float64), ">f8" or "<f4")"});
}

NpyOrder orderOf(std::string_view value) {
    if (value == "False") return NpyOrder::RowMajor;
    if (value == "True") return NpyOrder::ColumnMajor;
    throw Error(
        {.found = "found the NumPy fortran_order " + quotedExcerpt(value), .expected = "True or False"});
}

Error shapeError(std::string_view value) {
    return Error({.found = "found a NumPy array of the shape " + quotedExcerpt(value),
                  .expected = "(rows, columns), or (columns,) for one row, with 1 to " +
                              std::to_string(kMaxColumns) + " columns"});
}

// The sizes of a tuple such as "(5, 3)" or "(3,)".
std::vector<std::uint64_t> sizesOf(std::string_view value) {
    if (!value.starts_with('(') || !value.ends_with(')') || value.size() < 2) throw shapeError(value);
    std::string_view text = value.substr(1, value.size() - 2);
    std::vector<std::uint64_t> sizes;
    while (!withoutBlanks(text).empty()) {
        text = withoutBlanks(text);
        std::uint64_t size = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
        if (error != std::errc() || sizes.size() == kMaxDimensions) throw shapeError(value);
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        sizes.push_back(size);
        const bool hasComma = takeCharacter(text, ',');
        // A tuple of one size has a comma, in contrast to a number in parentheses.
        if (!hasComma && (!text.empty() || sizes.size() == 1)) throw shapeError(value);
    }
    return sizes;
}

void setShape(NpyHeader& header, std::string_view value) {
    const std::vector<std::uint64_t> sizes = sizesOf(value);
    if (sizes.empty()) throw shapeError(value);
    header.rowCount = sizes.size() == 1 ? 1 : sizes.front();
    header.columnCount = sizes.back();
    if (header.columnCount == 0 || header.columnCount > kMaxColumns ||
        header.rowCount > std::numeric_limits<std::uint64_t>::max() / header.rowBytes())
        throw shapeError(value);
}

}  // namespace

NpyHeader parseNpyHeader(std::string_view text) {
    const Entries entries = entriesOf(text);
    NpyHeader header;
    header.number = numberOf(*entries.number);
    header.order = orderOf(*entries.order);
    setShape(header, *entries.shape);
    return header;
}

// The text after the magic bytes, the version and the length of the text. It ends with a line feed.
std::string npyBeginning(std::uint64_t rowCount, std::uint64_t columnCount) {
    constexpr std::size_t kFirstBytes = kNpyMagic.size() + 4;
    constexpr std::size_t kTextBytes = kNpyBeginningBytes - kFirstBytes;
    static_assert(kTextBytes <= std::numeric_limits<unsigned char>::max());
    std::string beginning(kNpyMagic);
    beginning += {'\x01', '\x00', static_cast<char>(kTextBytes), '\x00'};
    beginning += "{'descr': '<f8', 'fortran_order': False, 'shape': (" + std::to_string(rowCount) + ", " +
                 std::to_string(columnCount) + "), }";
    beginning.resize(kNpyBeginningBytes - 1, ' ');
    return beginning + '\n';
}

}  // namespace quarn
