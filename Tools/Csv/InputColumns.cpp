#include "Csv/InputColumns.h"

#include <algorithm>

#include <QuarnKit/Base/NumberText.h>

namespace quarn::tool {

namespace {

std::vector<std::string> axes(const std::string& prefix) {
    return {prefix + "X", prefix + "Y", prefix + "Z"};
}

const std::vector<std::string> kCoordinates = {"x", "y", "z"};

ColumnGroup positionGroup() {
    return {kCoordinates, axes("pos"), axes("position")};
}

// The coordinates of a result are x, y and z. A row that a command wrote before may have both, so
// the names of the ray come first.
ColumnGroup originGroup() {
    return {axes("from"), axes("origin"), kCoordinates, axes("pos"), axes("position")};
}

ColumnGroup targetGroup() {
    return {axes("to"), axes("target")};
}

ColumnGroup directionGroup() {
    return {axes("d"), axes("dir"), axes("direction")};
}

bool isIgnored(char character) {
    return std::string_view(" \t_-.").find(character) != std::string_view::npos;
}

char lowered(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

std::string comparable(std::string_view name) {
    std::string result;
    for (const char character : name)
        if (!isIgnored(character)) result += lowered(character);
    return result;
}

// Appends the indexes of the columns of the first names that are all in the header.
bool appendCells(const ColumnGroup& group, std::span<const std::string_view> header,
                 std::vector<std::size_t>& cells) {
    for (const auto& names : group) {
        std::vector<std::size_t> found;
        for (const std::string& name : names) {
            const auto cell = std::find_if(header.begin(), header.end(), [&](std::string_view text) {
                return isSameColumnName(text, name);
            });
            if (cell == header.end()) break;
            found.push_back(static_cast<std::size_t>(cell - header.begin()));
        }
        if (found.size() < names.size()) continue;
        cells.insert(cells.end(), found.begin(), found.end());
        return true;
    }
    return false;
}

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ",") + name;
    return text;
}

std::string namesOf(const ColumnGroup& group) {
    std::string text = joined(group.front());
    for (std::size_t i = 1; i < group.size(); ++i)
        text += (i == 1 ? " (or " : ", ") + group[i].front() + ".." + (i + 1 == group.size() ? ")" : "");
    return text;
}

}  // namespace

InputColumns uvInput() {
    return {{"u", "v"}, {{{{{"u", "v"}}}}}};
}

InputColumns positionInput() {
    return {kCoordinates, {{{positionGroup()}}}};
}

InputColumns rayInput() {
    return {{"fromX", "fromY", "fromZ", "toX", "toY", "toZ"},
            {{{originGroup(), targetGroup()}},
             {{originGroup(), directionGroup()}, RowConversion::DirectionToTarget}}};
}

InputColumns lineInput() {
    return {{"x", "y", "z", "dx", "dy", "dz"},
            {{{originGroup(), directionGroup()}},
             {{originGroup(), targetGroup()}, RowConversion::TargetToDirection}}};
}

HeaderName splitHeaderName(std::string_view text) {
    text = trimmed(text);
    for (const std::string_view brackets : {"[]", "()"}) {
        const std::size_t open = text.find(brackets[0]);
        if (open == 0 || open == std::string_view::npos || text.back() != brackets[1]) continue;
        return {trimmed(text.substr(0, open)), trimmed(text.substr(open + 1, text.size() - open - 2))};
    }
    return {text, {}};
}

bool isSameColumnName(std::string_view a, std::string_view b) {
    return comparable(a) == comparable(b);
}

std::optional<ColumnMatch> matchColumns(const InputColumns& columns,
                                        std::span<const std::string_view> header) {
    for (const InputForm& form : columns.forms) {
        ColumnMatch match{.conversion = form.conversion};
        bool isComplete = true;
        for (const ColumnGroup& group : form.groups) {
            isComplete = isComplete && appendCells(group, header, match.cells);
            match.firstNames.insert(match.firstNames.end(), group.front().begin(), group.front().end());
        }
        if (isComplete) return match;
    }
    return std::nullopt;
}

// The forms of a command differ at most in their last group.
std::string knownNames(const InputColumns& columns) {
    const std::vector<ColumnGroup>& groups = columns.forms.front().groups;
    std::string text = namesOf(groups.front());
    if (groups.size() == 1) return text;
    text += " with ";
    for (const InputForm& form : columns.forms)
        text += (&form == &columns.forms.front() ? "" : " or ") + namesOf(form.groups.back());
    return text;
}

}  // namespace quarn::tool
