/// \file
/// Screens from STL files.
#pragma once

#include <istream>
#include <string>
#include <vector>

#include <Common/Export.h>
#include <QuarnScreen/MeshScreen.h>

/// A mesh screen from an STL file, without UVs, axes and scale.
///
/// Positions are used unchanged, in the unit and frame of the file. Defects of a file are printed
/// to the standard error stream and make isValid() false; loads do not throw for them. The screen
/// stores a copy of the file's bytes.
///
/// Thread-safety: as for MeshScreen. Loads do not start threads.
///
/// \note Intended: only binary files load completely. A text file with a facet is invalid, as the
///       load stops at the first "endfacet"; a reader would expect text files to load.
/// \note Intended: a triangle keeps the normal of the file and has no edges, unless the three
///       numbers of the normal add up to about zero. Rays hit such a triangle, but no position lies
///       on it; a reader would expect both.
///
/// \code{.cpp}
/// STLScreen screen;
/// std::istringstream file("solid empty\nendsolid empty\n");
/// screen.deserialize(file);
/// assert(screen.isValid() && !screen.hasTesselation());
/// \endcode
class QUARNSCREEN_EXPORT STLScreen : public MeshScreen {
public:
    /// Creates a screen without triangles; isValid() is false.
    STLScreen();
    ~STLScreen() override;

    /// Returns "class STLScreen".
    [[nodiscard]] static const std::string& type();
    [[nodiscard]] const std::string& getType() const override;

    /// Returns true if the last load succeeded.
    [[nodiscard]] bool isValid() const override;
    /// Returns false.
    [[nodiscard]] bool hasParameterization() const override;
    /// Returns 20 zero bytes, or the digest of the empty text once a load has failed.
    /// \note Intended: the digest does not cover the file; a reader would expect the digest of its
    ///       bytes.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    /// Returns no positions.
    [[nodiscard]] std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                            int rows) const override;
    /// Ignores the call.
    void updateGeometry(IScreenConfig* config) override;

    /// Loads a file by its path, as deserialize(), with numbers in the classic locale. A file that
    /// does not open makes the screen invalid and changes nothing else.
    void deserializeFromFile(const std::wstring& path);

    /// Loads a stream and rebuilds all indexes. Triangles that were read before an error remain.
    /// The numbers of a text are read in the locale of the stream.
    /// O(n log n) in the number of triangles.
    /// \throws std::bad_alloc if out of memory
    /// \note Intended: the triangles are appended to those of earlier loads, and a binary file is
    ///       read from the start of the stream regardless of its position; a reader would expect
    ///       neither.
    /// \warning May not terminate for coordinates that are NaN, as findBoundaryNew(). The same
    ///          applies to the other loads.
    void deserialize(std::istream& in);

    /// Scales the mesh as OBJScreen::scaleToUnitRectangle().
    void scaleToUnitRectangle();

    /// Writes the bytes of the file as base64. O(n).
    /// \note Intended: a binary file is not read back unchanged, as deserialize() passes its bytes
    ///       through a wide string; a reader would expect the same bytes.
    void serialize(std::wostream& out, int indent) override;
    /// Reads the element that serialize() writes, and loads its bytes.
    /// \pre \p node is not null
    /// \throws ZelmoreParseException if \p node has no child nodes
    /// \warning May not terminate for coordinates that are NaN.
    void deserialize(xercesc::DOMNode* node) override;

private:
    bool valid = false;
    std::string loadedFileContents;
    DataHash dataHash{};
};
