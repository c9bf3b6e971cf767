#include "ObjPartNames.h"

#include <algorithm>

#include <QuarnKit/Formats/Obj/Repair/ObjPrescan.h>

namespace quarn {

namespace {

std::string_view withoutSpace(std::string_view text) {
    while (!text.empty() && isObjSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && isObjSpace(text.back())) text.remove_suffix(1);
    return text;
}

std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    for (text = withoutSpace(text); !text.empty(); text = withoutSpace(text)) {
        const auto* const end = std::find_if(text.begin(), text.end(), isObjSpace);
        const auto length = static_cast<std::size_t>(end - text.begin());
        words.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return words;
}

}  // namespace

// A "#" belongs to the name, as in "Wall #2".
bool ObjPartNames::read(const ObjLogicalLine& logicalLine) {
    if (logicalLine.words.empty()) return false;
    const std::string_view keyword = logicalLine.words.front();
    if (keyword != "o" && keyword != "g") return false;
    const std::string_view names = withoutSpace(withoutSpace(logicalLine.text).substr(keyword.size()));
    if (keyword == "o") objectName = names;
    groupText = keyword == "g" ? names : std::string_view();
    groupNames = wordsOf(groupText);
    if (groupNames.empty() && objectName.empty()) groupNames.push_back(kDefaultObjGroup);
    return true;
}

bool ObjPartNames::contains(std::string_view name) const {
    return (!objectName.empty() && name == objectName) || (!groupText.empty() && name == groupText) ||
           std::find(groupNames.begin(), groupNames.end(), name) != groupNames.end();
}

bool isObjFaceLine(const ObjLogicalLine& logicalLine) {
    const ObjLineKind kind = kindOf(logicalLine);
    return kind == ObjLineKind::Face ||
           (kind == ObjLineKind::Misread && logicalLine.words.front().starts_with('f'));
}

}  // namespace quarn
