#include "Reports/ObjectList.h"

#include <algorithm>
#include <array>

#include <QuarnKit/Base/PrintableText.h>

namespace quarn::tool {

namespace {

using Cells = std::array<std::string, 5>;

constexpr std::size_t kNameColumn = 4;

std::string wordOf(ObjPartKind kind) {
    return kind == ObjPartKind::Object ? "object" : "group";
}

std::vector<Cells> cellsOf(const std::vector<ObjPart>& parts) {
    std::vector<Cells> rows = {{"kind", "faces", "vertices", "line", "name"}};
    for (const ObjPart& part : parts)
        rows.push_back({wordOf(part.kind), std::to_string(part.faces), std::to_string(part.vertices),
                        std::to_string(part.line), printable(part.name)});
    return rows;
}

}  // namespace

std::string partsText(const std::vector<ObjPart>& parts) {
    const std::vector<Cells> rows = cellsOf(parts);
    std::array<std::size_t, kNameColumn> widths{};
    for (const Cells& row : rows)
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths.at(i) = std::max(widths.at(i), row.at(i).size());
    std::string text;
    for (const Cells& row : rows) {
        for (std::size_t i = 0; i < widths.size(); ++i) {
            // The word is aligned to the left, numbers to the right.
            const std::string padding(widths.at(i) - row.at(i).size(), ' ');
            text += (i == 0 ? row.at(i) + padding : padding + row.at(i)) + "  ";
        }
        text += row.at(kNameColumn) + "\n";
    }
    return text;
}

Json jsonParts(const std::string& file, const std::vector<ObjPart>& parts) {
    Json list = Json::array();
    for (const ObjPart& part : parts)
        list.append(Json::object({{"kind", wordOf(part.kind)},
                                  {"name", part.name},
                                  {"faces", part.faces},
                                  {"vertices", part.vertices},
                                  {"line", part.line}}));
    return Json::object({{"command", "info"}, {"screen", file}, {"objects", list}});
}

}  // namespace quarn::tool
