/// \file
/// Findings of the check of a mesh.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <QuarnKit/Base/Error.h>
#include <QuarnScreen/Detail/Obj/ObjData.h>
#include <QuarnScreen/Triangle.h>

namespace quarn {

/// A mesh as it was read. The lists belong to the caller and have to outlive the object.
struct CheckedMesh {
    const detail::ObjData& objData;           ///< Data of its file; empty if the format has none.
    const std::vector<Triangle>& triangles;   ///< In the screen's frame, kNoUV for a missing UV.
    const std::vector<std::uint64_t>& lines;  ///< Line of each triangle's face; may be empty.
    bool canHaveUV = true;                    ///< False for a mesh of a format without UVs.
    std::string file = {};                    ///< Its file; may be empty.
};

/// A problem prevents a calibration; a note does not.
enum class Severity { Problem, Note };

/// Where something was found; 0 if a number does not apply.
struct Place {
    std::uint64_t triangle = 0;  ///< Its number, from 1.
    std::uint64_t line = 0;      ///< Line of its face in the file, from 1.
};

/// One kind of defect, with all of its cases.
struct Finding {
    std::string name;  ///< A stable identifier, such as "degenerate-triangle".
    Severity severity = Severity::Problem;
    std::uint64_t count = 0;
    bool isCountExact = true;        ///< False if there may be more cases.
    std::vector<Place> places = {};  ///< The first few.
    std::string text;                ///< What was found, for people.
    std::string hint = {};           ///< What to do about it, for people.
    Remedy remedy = {};              ///< An action of the application that helps.
};

/// Counts the triangles of a finding, and stores the places of the first few.
class Cases {
public:
    explicit Cases(const CheckedMesh& checkedMesh) : mesh(checkedMesh) {}
    /// \param isCase by triangle
    Cases(const CheckedMesh& checkedMesh, const std::vector<bool>& isCase);
    /// \param triangles indices from 0
    Cases(const CheckedMesh& checkedMesh, std::span<const std::uint32_t> triangles);

    /// Adds a case.
    /// \param triangle index from 0
    void add(std::size_t triangle);

    [[nodiscard]] std::uint64_t count() const { return caseCount; }
    [[nodiscard]] const std::vector<Place>& first() const { return places; }

private:
    static constexpr std::size_t kMaxPlaces = 5;

    const CheckedMesh& mesh;
    std::uint64_t caseCount = 0;
    std::vector<Place> places;
};

/// Appends a problem if there is a case.
/// \param text follows the count, as in "2 triangles " + text
void addProblem(std::vector<Finding>& findings, const std::string& name, const Cases& cases,
                const std::string& text, const std::string& hint);

/// Returns a count with a noun, as in "1 triangle" or "2 triangles".
[[nodiscard]] std::string counted(std::uint64_t count, const std::string& noun);

}  // namespace quarn
