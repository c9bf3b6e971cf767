#include "ObjNumberForm.h"

#include <algorithm>

#include <QuarnScreen/Detail/Obj/ObjNumbers.h>

namespace quarn {

namespace {

// Removes a run of digits and returns true if there was one.
bool skipDigits(std::string_view& word) {
    const std::size_t length = std::min(word.find_first_not_of("0123456789"), word.size());
    word.remove_prefix(length);
    return length > 0;
}

void skipSign(std::string_view& word) {
    if (word.starts_with('-') || word.starts_with('+')) word.remove_prefix(1);
}

}  // namespace

ObjNumberForm numberFormOf(std::string_view word) {
    const bool hasPlusSign = word.starts_with('+');
    skipSign(word);
    const bool hasWhole = skipDigits(word);
    if (word.starts_with('.')) word.remove_prefix(1);
    const bool hasFraction = skipDigits(word);
    if (!hasWhole && !hasFraction) return ObjNumberForm::NoNumber;
    if (word.starts_with('e') || word.starts_with('E')) {
        word.remove_prefix(1);
        skipSign(word);
        if (!skipDigits(word)) return ObjNumberForm::NoNumber;
    }
    if (!word.empty()) return ObjNumberForm::NoNumber;
    return hasPlusSign ? ObjNumberForm::WithPlusSign : ObjNumberForm::Plain;
}

float objNumberOf(std::string_view word) {
    // The scan needs a byte after the number.
    return detail::scanFloatReference(std::string(word.substr(word.starts_with('+') ? 1 : 0)).c_str()).value;
}

std::string expectedNumberFor(std::string_view word) {
    std::string withPoint(word);
    std::replace(withPoint.begin(), withPoint.end(), ',', '.');
    if (withPoint != word && numberFormOf(withPoint) != ObjNumberForm::NoNumber)
        return "a decimal point, as in " + withPoint + "; export the file again without decimal commas";
    return "a number such as 1.5 or -2e-3; correct the line, or export the file again";
}

}  // namespace quarn
