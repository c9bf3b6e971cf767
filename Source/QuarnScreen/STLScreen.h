/// \file
/// Screens from STL files.
#pragma once

#include <istream>
#include <string>
#include <vector>

#include <Common/Export.h>
#include <QuarnScreen/MeshScreen.h>

/// A mesh screen from an STL file. It has no UVs, axes or scale.
///
/// Binary files are read in full. Intended: of the text form only files without a facet load; a facet ends the load at
/// its "endfacet". A reader would expect the text form to load as well. What is wrong with a file is printed on the
/// standard error stream, and isValid() is false then; nothing is thrown for it.
///
/// Intended: triangles keep the file's normal and get no edges, unless that normal adds up to nothing; rays strike them,
/// but no position lies on them. A reader would expect both.
///
/// **Threads.** As for MeshScreen; no thread is started.
class QUARNSCREEN_EXPORT STLScreen : public MeshScreen {
public:
    /// An empty screen.
    STLScreen();
    ~STLScreen() override;

    /// "class STLScreen".
    [[nodiscard]] static const std::string& type();
    [[nodiscard]] const std::string& getType() const override;

    /// Whether the last load succeeded.
    [[nodiscard]] bool isValid() const override;
    /// False.
    [[nodiscard]] bool hasParameterization() const override;
    /// Intended: zero after good loads, and the digest of the empty text once a load has failed; a reader would expect
    /// the digest of the file.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    /// None.
    [[nodiscard]] std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                            int rows) const override;
    /// Does nothing.
    void updateGeometry(IScreenConfig* config) override;

    /// Loads a file by its path; one that does not open only makes the screen invalid.
    void deserializeFromFile(const std::wstring& path);

    /// Loads a stream. Intended: its triangles are added to those of before, and a binary file is read from the stream's
    /// start wherever it stands; a reader would expect neither. What was read before an error stays.
    /// \warning As findBoundaryNew(), here and in the other loads: it may not end for coordinates that are NaN.
    void deserialize(std::istream& in);

    /// As OBJScreen::scaleToUnitRectangle().
    void scaleToUnitRectangle();

    /// Writes the bytes of the file as base64. Intended: a binary file does not come back as it was, as its bytes pass
    /// through a wide string on the way.
    void serialize(std::wostream& out, int indent) override;
    void deserialize(xercesc::DOMNode* node) override;

private:
    bool valid = false;
    std::string loadedFileContents;
    DataHash dataHash{};
};
