#include "Reference/Formats/ReferenceAnyObjReader.h"

#include <sstream>
#include <string_view>

#include <QuarnScreen/Detail/Obj/ObjNumbers.h>

namespace quarn::test {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct Line {
    std::uint64_t number = 1;
    std::string text;
};

bool isData(const std::string& line) {
    const std::size_t first = line.find_first_not_of(" \t\v\f");
    return first != std::string::npos && (line[first] == 'v' || line[first] == 'f');
}

std::vector<Line> linesOf(const std::string& text) {
    std::vector<Line> lines(1);
    std::uint64_t number = 1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char byte = text[i];
        if (byte != '\n' && byte != '\r') {
            lines.back().text += byte;
            continue;
        }
        if (text.substr(i, 3) == "\r\r\n")
            i += 2;
        else if (text.substr(i, 2) == "\r\n")
            i += 1;
        ++number;
        std::string& line = lines.back().text;
        if (isData(line) && line.ends_with('\\'))
            line.back() = ' ';
        else
            lines.push_back({number, {}});
    }
    return lines;
}

std::vector<std::string> wordsOf(const std::string& line) {
    std::istringstream stream(line.substr(0, line.find('#')));
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

template <std::size_t N>
std::array<float, N> numbersOf(const std::vector<std::string>& words) {
    std::array<float, N> numbers{};
    for (std::size_t i = 0; i < N && i + 1 < words.size(); ++i) {
        const std::string& word = words[i + 1];
        numbers.at(i) = detail::scanFloatReference(word.c_str() + (word.front() == '+' ? 1 : 0)).value;
    }
    return numbers;
}

// The index from 0 that a reference means behind \p count records; -1 where there is none.
long indexOf(const std::string& reference, std::size_t count) {
    if (reference.empty()) return -1;
    const long number = std::stol(reference);
    return number < 0 ? static_cast<long>(count) + number : number - 1;
}

}  // namespace

std::vector<ReferenceAnyObjTriangle> referenceAnyObjTriangles(const std::string& text) {
    struct Reference {
        long vertex = -1;
        long uv = -1;
    };
    struct Polygon {
        std::uint64_t line;
        std::vector<Reference> corners;
    };
    std::vector<std::array<float, 3>> positions;
    std::vector<std::array<float, 2>> uvs;
    std::vector<Polygon> polygons;
    for (const Line& line :
         linesOf(text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text)) {
        const auto words = wordsOf(line.text);
        if (words.empty()) continue;
        if (words[0] == "v") positions.push_back(numbersOf<3>(words));
        if (words[0] == "vt") uvs.push_back(numbersOf<2>(words));
        if (words[0] != "f") continue;
        Polygon& polygon = polygons.emplace_back(Polygon{line.number, {}});
        for (std::size_t i = 1; i < words.size(); ++i) {
            std::istringstream parts(words[i]);
            std::string vertex;
            std::string uv;
            std::getline(parts, vertex, '/');
            std::getline(parts, uv, '/');
            polygon.corners.push_back({indexOf(vertex, positions.size()), indexOf(uv, uvs.size())});
        }
    }

    std::vector<ReferenceAnyObjTriangle> triangles;
    for (const Polygon& polygon : polygons)
        for (std::size_t i = 2; i < polygon.corners.size(); ++i) {
            ReferenceAnyObjTriangle& triangle = triangles.emplace_back();
            triangle.line = polygon.line;
            const std::array<std::size_t, 3> picks = {0, i - 1, i};
            for (std::size_t k = 0; k < picks.size(); ++k) {
                const Reference& reference = polygon.corners[picks.at(k)];
                triangle.corners.at(k).position = positions.at(static_cast<std::size_t>(reference.vertex));
                if (reference.uv >= 0 && static_cast<std::size_t>(reference.uv) < uvs.size())
                    triangle.corners.at(k).uv = uvs[static_cast<std::size_t>(reference.uv)];
            }
        }
    return triangles;
}

}  // namespace quarn::test
