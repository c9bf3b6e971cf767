/// \file
/// Lines of a report for people.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace quarn::tool {

/// Lines of "key: value" with aligned values.
class AlignedText {
public:
    void add(const std::string& key, const std::string& value) { lines.emplace_back(key, value); }
    [[nodiscard]] std::string text() const;

private:
    std::vector<std::pair<std::string, std::string>> lines;
};

}  // namespace quarn::tool
