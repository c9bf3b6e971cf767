#include "ObjTextEdit.h"

#include <algorithm>
#include <cmath>

#include <QuarnKit/Base/Bounds.h>
#include <QuarnKit/Base/ByteOrderMarks.h>
#include <QuarnKit/Base/IsFinite.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Formats/Obj/CoordinateRounding.h>
#include <QuarnKit/Formats/Obj/ObjNumberText.h>
#include <QuarnKit/Formats/Obj/ObjSourceText.h>
#include <QuarnKit/Formats/Obj/ObjValidation.h>
#include <QuarnKit/Formats/Obj/Repair/ObjLogicalLines.h>
#include <QuarnKit/Formats/Obj/Repair/ObjNumberForm.h>
#include <QuarnKit/Formats/Obj/Repair/ObjPrescan.h>
#include <QuarnKit/Formats/Obj/Repair/ObjRepairer.h>
#include <QuarnScreen/Detail/Obj/ObjParser.h>

namespace quarn {

namespace {

// Returns the text of a number after an edit. A word that the edit cannot represent stays, so that
// it is refused later.
template <class Edit>
std::string editedWord(std::string_view word, Edit edit) {
    const auto number = numberFormOf(word) == ObjNumberForm::NoNumber ? std::nullopt : parseNumber(word);
    const double edited = number ? edit(*number) : kMaxObjNumber;
    return std::abs(edited) < kMaxObjNumber ? objNumberText(static_cast<float>(edited)) : std::string(word);
}

class TextEditor {
public:
    // subtracted: nothing if it is zero
    TextEditor(const Point<double, 3>& subtracted, VDirection direction)
        : origin(subtracted), vDirection(direction) {}

    [[nodiscard]] bool movesOrigin() const { return origin != Point<double, 3>(); }
    [[nodiscard]] std::string editedText(const std::string& objText);

private:
    void add(const ObjLogicalLine& line);
    void addVertex(const ObjLogicalLine& line);
    void addUV(const ObjLogicalLine& line);
    void addRest(const ObjLogicalLine& line, std::size_t firstWord);

    Point<double, 3> origin;
    VDirection vDirection;
    std::string text;
};

std::string TextEditor::editedText(const std::string& objText) {
    text.reserve(objText.size() + objText.size() / 8);
    if (objText.starts_with(kUtf8Mark)) text = kUtf8Mark;
    ObjLogicalLines lines(std::string_view(objText).substr(text.size()));
    for (ObjLogicalLine line; lines.next(line);) add(line);
    if (movesOrigin()) text += (text.ends_with('\n') ? "# " : "\n# ") + originComment(origin) + '\n';
    return std::move(text);
}

void TextEditor::add(const ObjLogicalLine& line) {
    const ObjLineKind kind = kindOf(line);
    if (kind == ObjLineKind::Vertex && line.words.size() > 1 && movesOrigin()) return addVertex(line);
    if (kind == ObjLineKind::UV && line.words.size() > 1 && vDirection == VDirection::Upward)
        return addUV(line);
    text.append(line.text).append(line.lineEnd);
}

// Missing numbers are 0 before the edit.
void TextEditor::addVertex(const ObjLogicalLine& line) {
    text += 'v';
    for (std::size_t i = 0; i < 3; ++i) {
        const std::string_view word = i + 1 < line.words.size() ? line.words[i + 1] : "0";
        text += ' ';
        // A coordinate that does not move keeps its digits.
        if (origin[i] == 0.0)
            text += word;
        else
            text += editedWord(word, [&](double number) { return number - origin[i]; });
    }
    addRest(line, 4);
}

void TextEditor::addUV(const ObjLogicalLine& line) {
    const std::string_view v = line.words.size() > 2 ? line.words[2] : "0";
    text.append("vt ").append(line.words[1]) +=
        ' ' + editedWord(v, [](double number) { return 1.0 - number; });
    addRest(line, 3);
}

// Blank lines follow a line that was continued, so that later lines keep their numbers.
void TextEditor::addRest(const ObjLogicalLine& line, std::size_t firstWord) {
    for (std::size_t i = firstWord; i < line.words.size(); ++i) text.append(1, ' ').append(line.words[i]);
    if (!line.comment.empty()) text.append(1, ' ').append(line.comment);
    text += line.lineEnd;
    if (!line.isContinued) return;
    const auto isFeed = [](char byte) { return byte == '\n'; };
    text.append(static_cast<std::size_t>(std::count_if(line.text.begin(), line.text.end(), isFeed)), '\n');
}

// Returns the bounds of the vertices of all faces.
Bounds<3> usedBoundsOf(const detail::ObjData& objData) {
    const auto& vertices = objData.vertexData.vertices;
    Bounds<3> bounds;
    for (const detail::ObjFace& face : objData.faces)
        for (const detail::ObjCorner& corner : face) {
            if (!detail::isObjIndexInRange(corner.vertex, vertices.size())) continue;
            const auto& [x, y, z] = vertices[static_cast<std::size_t>(corner.vertex)];
            bounds.include(Point<double, 3>(x, y, z));
        }
    return bounds;
}

// Returns the multiple of a power of ten that is next to a value. Negative powers divide, since
// 0.1 is not exact.
double roundedTo(double value, int power) {
    const double factor = std::pow(10.0, std::abs(power));
    // Adding 0 makes -0 positive.
    return (power < 0 ? std::round(value * factor) / factor : std::round(value / factor) * factor) + 0.0;
}

}  // namespace

void editObjText(ObjSource& source, const ObjOptions& options) {
    if (options.origin)
        source.origin = options.origin->position ? *options.origin->position
                                                 : findObjOrigin(repairObj(source.name, source.text).text);
    TextEditor editor(source.origin, options.vDirection);
    if (editor.movesOrigin() || options.vDirection == VDirection::Upward)
        source.text = editor.editedText(source.text);
}

Point<double, 3> findObjOrigin(const std::string& objText) {
    std::string text = objText;
    const Bounds<3> bounds = usedBoundsOf(detail::parseObj(joinObjLines({}, text).text));
    if (bounds.isEmpty() || !isFinite(bounds.min) || !isFinite(bounds.max)) return {};
    const double size = std::max(length(bounds.extent()), roundingOf(bounds).step);
    const int power = static_cast<int>(std::floor(std::log10(size)));
    Point<double, 3> origin;
    for (std::size_t i = 0; i < 3; ++i) origin[i] = roundedTo((bounds.min[i] + bounds.max[i]) / 2.0, power);
    return origin;
}

Point<double, 3> originInScreen(const Point<double, 3>& origin, const ObjFrame& frame) {
    ObjFrame unscaled = frame;
    unscaled.scale = 1.0F;
    const Matrix<float, 4> axes = unscaled.matrix();
    // The decimal factor that was meant is closer to this than the float.
    const double scale = parseNumber(objNumberText(frame.scale)).value_or(frame.scale);
    Point<double, 3> result;
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = scale * (axes(i, 0) * origin[0] + axes(i, 1) * origin[1] + axes(i, 2) * origin[2]) + 0.0;
    return result;
}

std::string coordinatesText(const Point<double, 3>& position) {
    // Every decimal number of so many digits comes back from a double.
    constexpr int kDigits = 15;
    return roundedNumberText(position[0], kDigits) + ", " + roundedNumberText(position[1], kDigits) + ", " +
           roundedNumberText(position[2], kDigits);
}

std::string originComment(const Point<double, 3>& origin) {
    return "origin moved by quarnscreen: add (" + coordinatesText(origin) + ") to each position";
}

}  // namespace quarn
