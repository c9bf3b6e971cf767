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
/// The text is kept: it is what the screen saves as XML and what its digest covers. The screen keeps no path and reads
/// no file again.
///
/// Read are the lines `v`, `vt`, `vn` and `f`, everything else is skipped. Every corner of a face must refer to a
/// vertex and to a normal, by positive numbers (`v/t/n` or `v//n`); a UV is taken from `vt`. Polygons become fans of
/// triangles. Intended: the values of the normals are not used, each triangle has that of its winding; and a text whose
/// last face line has no line feed cannot be loaded (std::bad_alloc). A reader would expect otherwise.
///
/// **Threads.** As for MeshScreen. A load starts threads of its own, which end before it returns.
class QUARNSCREEN_EXPORT OBJScreen : public MeshScreen {
public:
    /// How good the last load was.
    enum Status : int {
        StatusOk = 0,                  ///< All is well.
        StatusNoParameterization = 1,  ///< No `vt` line, or some corner has no UV: a surface without UVs.
        StatusBadNormals = 2,          ///< No `vn` line, or a reference to none: not loaded.
        StatusBadVertices = 3,         ///< No `v` line, or a reference to none: not loaded.
        StatusFileNotOpened = 4,       ///< The file did not open.
        StatusNotLoaded = 5,           ///< Nothing has been loaded yet.
        StatusBadBoundary = 6,  ///< UVs are good, but there is not one closed outline: a surface without UVs.
        StatusUvOutOfRange = 7  ///< Every corner has a UV, and one lies outside of [0, 1].
    };

    /// One vertex of generateOBJScreenFile().
    struct PointData {
        int index = 0;              ///< Number that the face lines print, from 1 in the map's order.
        Point<double, 3> normal;    ///< Normal.
        Point<double, 3> position;  ///< Position.
        Point<double, 2> uv;        ///< UV.
    };

    /// An empty screen.
    /// \param axisForward, axisUpward axes of the file that become the screen's +Y and +Z: `X`, `Y` or `Z`, with a minus
    ///        sign in front for the opposite direction
    /// \param scale factor for all positions
    OBJScreen(std::wstring axisForward = L"Y", std::wstring axisUpward = L"Z", float scale = 1.0F);
    ~OBJScreen() override;

    /// "class OBJScreen".
    [[nodiscard]] static const std::string& type();
    [[nodiscard]] const std::string& getType() const override;

    [[nodiscard]] Status getStatus() const;
    /// Whether the status is StatusOk.
    [[nodiscard]] bool hasValidParameterization() const;
    /// Whether there is a surface to ask: the status is 0, 1, 6 or 7.
    [[nodiscard]] bool isValid() const override;
    /// Whether there are UVs to map by: the status is 0 or 7.
    [[nodiscard]] bool hasParameterization() const override;
    /// SHA-1 of the kept text; zero until a load gets that far. Axes and scale do not enter.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    /// Does nothing.
    void updateGeometry(IScreenConfig* config) override;

    /// Loads a file by its path. \throws ObjLoadException "Could not open the file." (kind 3), and as deserialize()
    void deserializeFromFile(const std::wstring& path);

    /// Loads a text: the whole stream, from its start. Replaces what was loaded before; an empty stream drops triangles
    /// and text and changes nothing else.
    /// \throws ObjLoadException for no or bad vertices (kind 2) or normals (kind 1): text and status are then those of
    ///         the new text, the digest that of before, and queries but rays find nothing
    /// \throws std::bad_alloc when memory runs out, and for a face line that does not end
    /// \warning As findBoundaryNew(): it may not end where axes or scale make a coordinate NaN, which takes one that is
    ///          infinite as a float.
    void deserialize(std::istream& in);

    /// Overwrites each backslash in front of a line feed, and the line feed, with blanks.
    static void replaceNewLineEscapeSequencesWithBlanks(std::string& text);

    /// The text that was loaded last, with joined lines.
    [[nodiscard]] const std::string& getLoadedFileContents() const;

    /// The map from the file's frame to the screen's: x to the side, y forward, z upward. Intended: axes that are
    /// parallel, or none, give a useless matrix and no error.
    [[nodiscard]] static Matrix<float, 4> getTransformMatrix(const std::wstring& axisForward,
                                                             const std::wstring& axisUpward, float scale);

    /// Moves the mesh into a unit rectangle and puts a rectangle behind it; prints "..." on the standard output.
    /// Intended: nothing is rebuilt, so something that does has to follow; and a maximum below zero counts as zero.
    void scaleToUnitRectangle();

    /// Writes the tags ScreenString (the text in base64), AxisForward, AxisUpward and Scale.
    void serialize(std::wostream& out, int indent) override;
    /// Reads that element, and loads the text, with the same warning; one with fewer than four child nodes is an older form, whose text is the ScreenString.
    void deserialize(xercesc::DOMNode* node) override;

    /// OBJ text of a flat grid in the plane y = 0.
    /// \param points pairs of a position (x, z) and its UV, row by row; kNoUV for a missing one, whose faces are left out
    /// \param dimensions columns and rows
    /// \param[out] hash digest of the text
    /// \throws ZelmoreException where the number of points is not columns times rows
    static std::stringstream generateOBJLayoutFormat(
        const std::vector<std::pair<Point<double, 2>, Point<double, 2>>>& points,
        const Point<int, 2>& dimensions, std::array<unsigned char, 20>& hash);

    /// Writes an OBJ file with shared vertices.
    /// \param points the vertices by position; a corner's position must be a key, exactly
    /// \return false where a corner is not among the points or the file does not open
    static bool generateOBJScreenFile(std::string path, const std::vector<Triangle>& triangles,
                                      const std::map<Point<double, 3>, PointData>& points);

    /// Writes a mesh as OBJ text with a vertex for each corner, in the number format of \p out. UVs are written where
    /// \p screen is an OBJScreen with status 0 or 6.
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
