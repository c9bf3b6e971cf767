/// \file
/// Screens from Wavefront OBJ files.
#pragma once

#include <array>
#include <istream>
#include <map>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <Common/Export.h>
#include <QuarnScreen/Matrix.h>
#include <QuarnScreen/MeshScreen.h>
#include <QuarnScreen/ObjLoadException.h>

/// A mesh screen from the text of a Wavefront OBJ file.
///
/// The axes and the scale of the constructor map the frame and unit of the file to those of the
/// screen. The screen stores the text, which it saves as XML and which its digest covers. The
/// screen does not store the path, and does not read the file again.
///
/// A load reads the lines `v`, `vt`, `vn` and `f` and skips all others. Every corner of a face must
/// refer to a vertex and a normal by positive numbers (`v/t/n` or `v//n`). UVs are those of `vt`.
/// Polygons become triangle fans.
///
/// Thread-safety: as for MeshScreen. A load starts threads of its own, which end before the load
/// returns.
///
/// \note Intended: the values of the normals are not used, and each triangle has the normal of its
///       winding; a reader would expect the normals of the file.
/// \note Intended: a text whose last face line has no line feed fails with std::bad_alloc; a reader
///       would expect the line to be read.
///
/// \code{.cpp}
/// OBJScreen screen;
/// std::istringstream text("v 0 0 0\nv 1 0 0\nv 0 0 1\nvt 0 1\nvt 1 1\nvt 0 0\nvn 0 -1 0\n"
///                         "f 1/1/1 2/2/1 3/3/1\n");
/// screen.deserialize(text);
/// assert(screen.getStatus() == OBJScreen::StatusOk);
/// assert(screen.mapInto2D({0.25, 0.0, 0.5}, false)[0] == 0.25);
/// \endcode
class QUARNSCREEN_EXPORT OBJScreen : public MeshScreen {
public:
    /// Result of the last load.
    enum Status : int {
        StatusOk = 0,                  ///< Loaded, with valid UVs and one boundary.
        StatusNoParameterization = 1,  ///< Loaded without UVs: no `vt` line, or none at a corner.
        StatusBadNormals = 2,          ///< Not loaded: no `vn` line, or an invalid reference.
        StatusBadVertices = 3,         ///< Not loaded: no `v` line, or an invalid reference.
        StatusFileNotOpened = 4,       ///< Not loaded: the file did not open.
        StatusNotLoaded = 5,           ///< Nothing has been loaded yet.
        StatusBadBoundary = 6,         ///< Loaded without UVs: not exactly one closed boundary.
        StatusUvOutOfRange = 7         ///< Loaded with UVs, of which one is outside of [0, 1].
    };

    /// One vertex of generateOBJScreenFile().
    struct PointData {
        int index = 0;              ///< Number in face lines, from 1 in the order of the map.
        Point<double, 3> normal;    ///< Normal.
        Point<double, 3> position;  ///< Position.
        Point<double, 2> uv;        ///< UV.
    };

    /// Creates a screen without triangles, with the status StatusNotLoaded.
    /// \param axisForward, axisUpward axes of the file that become the screen's +Y and +Z: `X`, `Y`
    ///        or `Z`, after a minus sign for the opposite direction; not validated
    /// \param scale factor for all positions; not validated
    OBJScreen(std::wstring axisForward = L"Y", std::wstring axisUpward = L"Z", float scale = 1.0F);
    ~OBJScreen() override;

    /// Returns "class OBJScreen".
    [[nodiscard]] static const std::string& type();
    [[nodiscard]] const std::string& getType() const override;

    /// Returns the result of the last load.
    [[nodiscard]] Status getStatus() const;
    /// Returns true if the status is StatusOk.
    [[nodiscard]] bool hasValidParameterization() const;
    /// Returns true if a surface is loaded: the status is 0, 1, 6 or 7.
    [[nodiscard]] bool isValid() const override;
    /// Returns true if the surface has UVs: the status is 0 or 7.
    [[nodiscard]] bool hasParameterization() const override;
    /// Returns the digest of the text of the last load that succeeded; zero before the first. Axes
    /// and scale are not included.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    /// Ignores the call.
    void updateGeometry(IScreenConfig* config) override;

    /// Loads a file by its path, as deserialize(). A file that does not open changes the status
    /// only.
    /// \throws ObjLoadException "Could not open the file." (kind 3), and as deserialize()
    void deserializeFromFile(const std::wstring& path);

    /// Loads a text: the whole stream, from its start. Replaces the previous mesh and rebuilds all
    /// indexes. An empty stream removes triangles and text and changes nothing else.
    ///
    /// O(n log n) in the number of triangles, and linear in the size of the text.
    /// \throws ObjLoadException for missing or invalid vertices (kind 2) or normals (kind 1). Text
    ///         and status are then those of the new text, and the digest is unchanged. Queries find
    ///         nothing, except rays, whose hits are unspecified
    /// \throws std::bad_alloc if out of memory, and for a last face line without line feed
    /// \throws std::system_error if a thread does not start
    /// \warning May not terminate if axes or scale make a coordinate NaN, as findBoundaryNew().
    ///          This requires a coordinate that is infinite as a float.
    void deserialize(std::istream& in);

    /// Overwrites each backslash before a line feed, and the line feed, with blanks. O(n).
    static void replaceNewLineEscapeSequencesWithBlanks(std::string& text);

    /// Returns the text of the last load, with continued lines joined. The reference is valid until
    /// the next load.
    [[nodiscard]] const std::string& getLoadedFileContents() const;

    /// Returns the matrix that maps the frame of the file to the frame of the screen: x to the
    /// side, y forward, z upward.
    /// \note Intended: parallel or unknown axes give an unspecified matrix; a reader would expect
    ///       an error.
    [[nodiscard]] static Matrix<float, 4> getTransformMatrix(const std::wstring& axisForward,
                                                             const std::wstring& axisUpward, float scale);

    /// Scales and moves the mesh into a unit rectangle, and appends two triangles that form a
    /// rectangle at its smallest z. Prints "..." to the standard output. O(n).
    /// \note Intended: no index is rebuilt, and a maximum coordinate below zero counts as zero; a
    ///       reader would expect rebuilt indexes and the true maximum. Call an operation that
    ///       rebuilds the indexes afterwards.
    void scaleToUnitRectangle();

    /// Writes the tags ScreenString (the text in base64), AxisForward, AxisUpward and Scale. O(n).
    void serialize(std::wostream& out, int indent) override;
    /// Reads the element that serialize() writes, and loads its text as deserialize(std::istream&).
    ///
    /// An element with fewer than four child nodes has the older form: its own text is the base64,
    /// and axes and scale are unchanged.
    /// \pre \p node is not null
    /// \throws ZelmoreParseException if the element with the base64 has no child nodes
    /// \throws ObjLoadException as deserialize(std::istream&)
    /// \warning May not terminate if a coordinate becomes NaN.
    void deserialize(xercesc::DOMNode* node) override;

    /// Generates the OBJ text of a flat grid in the plane y = 0. O(n).
    /// \param points pairs of a position (x, z) and its UV, row by row; faces at a point with kNoUV
    ///        are omitted
    /// \param dimensions numbers of columns and rows
    /// \param[out] hash digest of the text
    /// \return the text, in the classic locale
    /// \throws ZelmoreException (line 402) if the number of points is not columns times rows
    static std::stringstream generateOBJLayoutFormat(
        const std::vector<std::pair<Point<double, 2>, Point<double, 2>>>& points,
        const Point<int, 2>& dimensions, std::array<unsigned char, 20>& hash);

    /// Writes an OBJ file with shared vertices. O(n log n).
    /// \param path the file, which is replaced
    /// \param triangles triangles of the face lines
    /// \param points the vertices by position; the exact position of each corner must be a key
    /// \return false if a corner is not among the points, or if the file does not open
    static bool generateOBJScreenFile(std::string path, const std::vector<Triangle>& triangles,
                                      const std::map<Point<double, 3>, PointData>& points);

    /// Writes a mesh as OBJ text with one vertex per corner, in the number format of \p out. O(n).
    ///
    /// UVs are written if \p screen is an OBJScreen with the status 0 or 6.
    /// \pre \p screen is not null
    /// \note Intended: UVs of a screen with the status 7 are not written; a reader would expect
    ///       them.
    static void serialize(std::ostream& out, const MeshScreen* screen);

private:
    void load();

    Status status = StatusNotLoaded;
    DataHash dataHash{};
    std::string loadedFileContents;
    std::wstring axisForward;
    std::wstring axisUpward;
    float scale;
};
