/// \file
/// Where the text of an OBJ screen comes from, and how it lies in the world.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <QuarnKit/Formats/ScreenFile.h>
#include <QuarnKit/Formats/Xml/XmlDocument.h>
#include <QuarnScreen/Matrix.h>

namespace quarn {

/// How the frame of an OBJ text lies in that of the screen.
struct ObjFrame {
    std::string forward = "Y";  ///< Axis that becomes +Y.
    std::string upward = "Z";   ///< Axis that becomes +Z.
    float scale = 1.0F;

    [[nodiscard]] Matrix<float, 4> matrix() const;
};

/// What the options of a command say about that; nothing where an option is not given.
struct ObjOptions {
    std::optional<std::string> forward = {};
    std::optional<std::string> upward = {};
    std::optional<float> scale = {};

    [[nodiscard]] bool any() const { return forward || upward || scale; }
};

/// The text of a mesh that nobody vouches for.
struct ObjSource {
    std::string file;  ///< The file that holds it.
    std::string name;  ///< What error lines call it.
    std::string text;
    ObjFrame frame;
};

/// That of an OBJ or STL file. Stops where the options tell axes that do not go together.
[[nodiscard]] ObjSource objSourceOf(ScreenFile file, const ObjOptions& options);

/// That of a ScreenGeometry element. Stops where it holds no text, or axes or a scale that no mesh can have.
[[nodiscard]] ObjSource objSourceOf(const std::string& path, const XmlDocument& document,
                                    xercesc::DOMElement& element);

/// Stops where a factor of positions is not finite as a float, or nothing.
[[nodiscard]] float objScaleFrom(const std::string& name, const std::string& text);

}  // namespace quarn
