/// \file
/// The form of numbers in the OBJ texts of any program.
#pragma once

#include <string>
#include <string_view>

namespace quarn {

/// Form of a number.
enum class ObjNumberForm { Plain, WithPlusSign, NoNumber };
[[nodiscard]] ObjNumberForm numberFormOf(std::string_view word);

/// Returns the float that the library reads from a number without its plus sign.
/// \pre numberFormOf() of the word is not NoNumber
[[nodiscard]] float objNumberOf(std::string_view word);

/// Returns what is valid in place of a word that is no number, for an error. Names a decimal comma.
[[nodiscard]] std::string expectedNumberFor(std::string_view word);

}  // namespace quarn
