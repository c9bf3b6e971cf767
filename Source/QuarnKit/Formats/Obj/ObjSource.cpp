#include "ObjSource.h"

#include <cmath>
#include <string_view>

#include <Common/TextConversion.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnScreen/OBJScreen.h>

namespace quarn {

namespace {

constexpr std::string_view kAxes = "XYZ";

// The last letter of a name counts.
std::size_t axisIndexOf(const std::string& name) {
    return name.empty() ? std::string_view::npos : kAxes.find(name.back());
}

}  // namespace

Matrix<float, 4> ObjFrame::matrix() const {
    return OBJScreen::getTransformMatrix(fromUtf8(forward), fromUtf8(upward), scale);
}

void checkObjAxes(const ObjFrame& frame, const std::string& file, std::uint64_t line) {
    const std::size_t forward = axisIndexOf(frame.forward);
    const std::size_t upward = axisIndexOf(frame.upward);
    if (forward != std::string_view::npos && upward != std::string_view::npos && forward != upward) return;
    throw Error({.found = "found the axes " + quotedExcerpt(frame.forward) + " for forward and " +
                          quotedExcerpt(frame.upward) + " for up",
                 .expected = "two different ones of X, Y and Z, such as -Z and Y",
                 .file = file,
                 .line = line});
}

float objScaleFrom(const std::string& name, const std::string& text) {
    const auto number = parseNumber(text);
    const auto scale = static_cast<float>(number.value_or(0.0));
    if (scale == 0.0F || !std::isfinite(scale))
        throw Error({.found = "found " + name + " " + quotedExcerpt(text),
                     .expected = "a nonzero number within the range of a float, such as 0.001"});
    return scale;
}

ObjSource objSourceOf(const std::string& file, std::string text, const ObjOptions& options) {
    ObjSource source{.file = file, .name = file, .text = std::move(text), .frame = {}};
    source.frame.forward = options.forward.value_or(source.frame.forward);
    source.frame.upward = options.upward.value_or(source.frame.upward);
    source.frame.scale = options.scale.value_or(source.frame.scale);
    checkObjAxes(source.frame, {}, 0);
    return source;
}

}  // namespace quarn
