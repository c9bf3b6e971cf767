/// \file
/// The texts of meshes in files and XML elements.
#pragma once

#include <string>

#include <QuarnKit/Formats/Obj/ObjSource.h>
#include <QuarnKit/Formats/Xml/XmlDocument.h>

#include "ScreenFile.h"

namespace quarn {

/// The text of a mesh of which no screen has been built yet.
struct MeshText {
    ScreenFormat format = ScreenFormat::Obj;  ///< Obj or Stl.
    ObjSource source;
};

/// Returns the text of an OBJ or STL file, with the frame of the options. Throws an Error if the
/// axes are parallel or unknown.
[[nodiscard]] MeshText meshTextOf(ScreenFile file, const ObjOptions& options);

/// Returns the text and the frame in the ScreenGeometry element of an OBJ screen. Throws an Error
/// if the element has no text, parallel or unknown axes, or a scale that is zero or not finite.
/// \param file the file of the document
[[nodiscard]] MeshText objTextOfElement(const std::string& file, const XmlDocument& document,
                                        xercesc::DOMElement& element);

/// Returns the text in the ScreenGeometry element of an STL screen. Throws an Error if there is
/// none.
///
/// Intended: bytes above 0x7F do not survive in the element, so that few binary files are restored.
/// \param file the file of the document
[[nodiscard]] MeshText stlTextOfElement(const std::string& file, const XmlDocument& document,
                                        xercesc::DOMElement& element);

}  // namespace quarn
