/// \file
/// The text of an OBJ screen before it is loaded, and its frame.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QuarnScreen/Matrix.h>
#include <QuarnScreen/Point.h>

#include "VDirection.h"

#include "ObjLineMap.h"

namespace quarn {

/// The axes and the scale that map the frame of an OBJ text to that of the screen.
struct ObjFrame {
    std::string forward = "Y";  ///< Axis that becomes +Y.
    std::string upward = "Z";   ///< Axis that becomes +Z.
    float scale = 1.0F;

    [[nodiscard]] Matrix<float, 4> matrix() const;
};

/// Says what a reader does with a mesh that the library does not load, or misreads.
enum class RepairPolicy {
    Refuse,  ///< Throws an Error, which has a remedy if the mesh can be repaired.
    Repair,  ///< Repairs the text in memory. An STL file of any form becomes an OBJ text.
};

/// The origin to which an OBJ text is moved.
struct ObjOrigin {
    /// In the frame of the text; if it is empty, a round position near the middle of the mesh.
    std::optional<Point<double, 3>> position = {};
};

/// Options of a mesh that is read, and edits of its text before it is loaded.
struct ObjOptions {
    // Values of the frame of an OBJ file that replace the defaults.
    std::optional<std::string> forward = {};
    std::optional<std::string> upward = {};
    std::optional<float> scale = {};

    RepairPolicy repair = RepairPolicy::Refuse;
    /// Names of the objects and groups of an OBJ text to read; empty for the whole mesh.
    std::vector<std::string> objects = {};

    std::optional<ObjOrigin> origin = {};          ///< Not moved if empty.
    VDirection vDirection = VDirection::Downward;  ///< Upward: each v becomes 1 - v.

    /// Returns true if a value of a frame is set.
    [[nodiscard]] bool changesFrame() const { return forward || upward || scale; }
};

/// The untrusted text of a mesh.
struct ObjSource {
    std::string file;  ///< The file that contains it.
    std::string name;  ///< Its name in error messages.
    std::string text;
    ObjFrame frame;
    ObjLineMap lineMap = {};       ///< The lines of the file, if the text was changed.
    Point<double, 3> origin = {};  ///< What was subtracted from the positions of the file.
};

/// Returns the source of an OBJ or STL file. Throws an Error if the axes of the options are
/// parallel or unknown.
[[nodiscard]] ObjSource objSourceOf(const std::string& file, std::string text, const ObjOptions& options);

/// Throws an Error if the axes of a frame are parallel or unknown.
/// \param file, line place in the error
void checkObjAxes(const ObjFrame& frame, const std::string& file, std::uint64_t line);

/// Returns the factor of positions in a text. Throws an Error if it is zero or not finite as a
/// float.
/// \param name name of the factor in the error
[[nodiscard]] float objScaleFrom(const std::string& name, const std::string& text);

}  // namespace quarn
