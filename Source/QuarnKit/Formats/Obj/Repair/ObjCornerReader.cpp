#include "ObjCornerReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/PrintableText.h>

namespace quarn {

namespace {

using Parts = std::array<std::string_view, 3>;

// Returns the texts between the slashes of a corner; nothing if there are too many slashes.
std::optional<Parts> splitAtSlashes(std::string_view corner) {
    Parts parts;
    for (std::string_view& part : parts) {
        const std::size_t slash = corner.find('/');
        part = corner.substr(0, slash);
        if (slash == std::string_view::npos) return parts;
        corner.remove_prefix(slash + 1);
    }
    return {};
}

std::optional<std::int64_t> integerOf(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    return number;
}

// Returns the integers of a corner, 0 for an empty part; nothing if the vertex is empty or a part
// is no integer.
std::optional<std::array<std::int64_t, 3>> referencesOf(const Parts& parts) {
    std::array<std::int64_t, 3> references{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (parts.at(i).empty() && i > 0) continue;
        const auto reference = integerOf(parts.at(i));
        if (!reference) return {};
        references.at(i) = *reference;
    }
    return references;
}

// Returns the number from 1 of a reference with \p count lines of its kind before it; 0 for a
// number below 1.
std::uint64_t absoluteNumber(std::int64_t reference, std::uint64_t count) {
    if (reference >= 0) return static_cast<std::uint64_t>(reference);
    const std::uint64_t back = std::uint64_t{0} - static_cast<std::uint64_t>(reference);
    return back > count ? 0 : count + 1 - back;
}

}  // namespace

std::uint64_t vertexNumberOf(std::string_view corner, std::uint64_t vertexCount) {
    const auto reference = integerOf(corner.substr(0, corner.find('/')));
    return reference ? absoluteNumber(*reference, vertexCount) : 0;
}

void ObjCornerReader::countLine(ObjLineKind kind) {
    if (kind == ObjLineKind::Vertex) ++vertexCount;
    if (kind == ObjLineKind::UV) ++uvCount;
    if (kind == ObjLineKind::Normal) ++normalCount;
}

std::uint64_t ObjCornerReader::uvOf(std::string_view part, std::uint64_t number, std::uint64_t line) {
    if (part.empty()) return 0;
    const bool exists = number >= 1 && number <= prescan.areUVsReadable.size();
    if (exists && prescan.areUVsReadable[number - 1]) return number;
    repairs.note(exists ? ObjRepair::UnreadableUV : ObjRepair::BadUVReference, line);
    return 0;
}

std::uint64_t ObjCornerReader::normalOf(std::string_view part, std::uint64_t number, std::uint64_t line) {
    if (number >= 1 && number <= prescan.normalCount) return number;
    repairs.note(part.empty() ? ObjRepair::MissingNormal : ObjRepair::BadNormalReference, line);
    return 0;
}

ObjCornerIndices ObjCornerReader::read(std::string_view corner, std::uint64_t line) {
    const auto refuse = [&](const std::string& expected) {
        throw Error({.found = "found " + quotedExcerpt(corner) + " as a corner of a face",
                     .expected = expected,
                     .file = name,
                     .line = line});
    };
    const auto parts = splitAtSlashes(corner);
    const auto references = parts ? referencesOf(*parts) : std::nullopt;
    if (!references) refuse("a form such as 1/1/1, 1//1, 1/1 or 1");
    const std::uint64_t vertex = absoluteNumber(references->at(0), vertexCount);
    if (vertex < 1 || vertex > prescan.positions.size())
        refuse("the number of a vertex from 1 to " + std::to_string(prescan.positions.size()));

    ObjCornerIndices numbers{.vertex = vertex};
    numbers.uv = uvOf(parts->at(1), absoluteNumber(references->at(1), uvCount), line);
    numbers.normal = normalOf(parts->at(2), absoluteNumber(references->at(2), normalCount), line);
    const bool isRelative =
        std::any_of(references->begin(), references->end(), [](std::int64_t i) { return i < 0; });
    if (isRelative) repairs.note(ObjRepair::RelativeReference, line);
    if (corner.ends_with('/')) repairs.note(ObjRepair::CornerForm, line);
    numbers.isPlain = !isRelative && numbers.normal != 0 && (parts->at(1).empty() || numbers.uv != 0);
    return numbers;
}

}  // namespace quarn
