/// \file
/// What a check of a mesh finds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <QuarnKit/Base/Error.h>

#include "CheckedMesh.h"

namespace quarn {

/// Whether something stands in the way of a calibration, or is only worth a word.
enum class Severity { Problem, Note };

/// Where something was found; 0 for what does not apply.
struct Place {
    std::uint64_t triangle = 0;  ///< Its number, from 1.
    std::uint64_t line = 0;
};

/// One kind of defect, with all of its cases.
struct Finding {
    std::string name;  ///< A stable word, such as "degenerate-triangle".
    Severity severity = Severity::Problem;
    std::uint64_t count = 0;
    bool isCountExact = true;        ///< False where there may be more.
    std::vector<Place> places = {};  ///< The first few.
    std::string text;
    std::string hint = {};
    Remedy remedy = {};
};

/// Counts the triangles of a finding, and keeps the first few.
class Cases {
public:
    explicit Cases(const CheckedMesh& checkedMesh) : mesh(checkedMesh) {}
    /// \param isCase by triangle
    Cases(const CheckedMesh& checkedMesh, const std::vector<bool>& isCase);
    /// \param triangles indices from 0
    Cases(const CheckedMesh& checkedMesh, std::span<const std::uint32_t> triangles);

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

/// Appends a problem where there is a case. \p text is what stands behind the count.
void addProblem(std::vector<Finding>& findings, const std::string& name, const Cases& cases,
                const std::string& text, const std::string& hint);

/// A count with a noun, as in "1 triangle" or "2 triangles".
[[nodiscard]] std::string counted(std::uint64_t count, const std::string& noun);

}  // namespace quarn
