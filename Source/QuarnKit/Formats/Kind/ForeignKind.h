/// \file
/// Recognizes files of other kinds than screens, so that errors can name them.
#pragma once

#include <optional>
#include <string_view>

namespace quarn {

/// A kind of file that is no screen. The texts are literals.
struct ForeignKind {
    std::string_view name;    ///< As in "a PNG picture".
    std::string_view remedy;  ///< What to do, as the end of a sentence; empty if nothing helps.
};

/// Returns the kind of a file that begins with the bytes of a known binary format.
[[nodiscard]] std::optional<ForeignKind> foreignKindOfBytes(std::string_view beginning);

/// Returns the kind of a text that begins as a known text format.
/// \param text without byte order mark
[[nodiscard]] std::optional<ForeignKind> foreignKindOfText(std::string_view text);

/// Returns the kind of an XML document by its root element.
[[nodiscard]] std::optional<ForeignKind> foreignKindOfXml(std::string_view text);

/// Returns the kind of a text whose first line with data has numbers alone, or cells.
[[nodiscard]] std::optional<ForeignKind> foreignKindOfTable(std::string_view text);

}  // namespace quarn
