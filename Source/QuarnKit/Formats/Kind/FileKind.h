/// \file
/// Detects the kind of a file by its contents and its name.
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "ForeignKind.h"

namespace quarn {

enum class ScreenFormat { Xml, Obj, Stl };

/// The format of a screen, or what a file contains instead.
using FileKind = std::variant<ScreenFormat, ForeignKind>;

/// Says if the first bytes of a file are all of it.
enum class FileExtent { Whole, Beginning };

/// Returns the kind of a file. Its contents decide, in this order:
///
/// 1. bytes that identify a binary format,
/// 2. an XML document, by its root element,
/// 3. the word "solid", for STL,
/// 4. the beginning of another text format,
/// 5. triangles with plausible coordinates, for STL, if their number is that of the header, or the
///    name of the file ends with .stl,
/// 6. a line that begins with a keyword of OBJ,
/// 7. a table of numbers.
///
/// If none of them applies, the extension decides.
/// \param bytes the first bytes of the file
/// \param text the same bytes as UTF-8, without byte order mark
[[nodiscard]] FileKind fileKindOf(std::string_view bytes, std::string_view text, FileExtent extent,
                                  const std::string& path);

}  // namespace quarn
