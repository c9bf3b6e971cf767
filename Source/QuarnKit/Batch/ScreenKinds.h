/// \file
/// The library's own classes of screens.
#pragma once

#include <typeinfo>

#include <QuarnScreen/OBJScreen.h>
#include <QuarnScreen/STLScreen.h>

namespace quarn {

/// Returns the screen if it is of the class \p Screen itself, and not of a derived class that may
/// override queries; otherwise null.
template <class Screen>
[[nodiscard]] const Screen* asExactly(const IScreenGeometry& screen) {
    return typeid(screen) == typeid(Screen) ? static_cast<const Screen*>(&screen) : nullptr;
}

/// Returns the mesh if the screen is one of the library's meshes; otherwise null.
[[nodiscard]] inline const MeshScreen* asMesh(const IScreenGeometry& screen) {
    if (const MeshScreen* const mesh = asExactly<OBJScreen>(screen)) return mesh;
    return asExactly<STLScreen>(screen);
}

}  // namespace quarn
