/// \file
/// Failure to load an OBJ file.
#pragma once

#include <Common/Export.h>
#include <Common/ZelmoreException.h>

/// An OBJ text that cannot be loaded.
///
/// file() is empty and line() is -1. The kinds are 1 for normals, 2 for vertices and 3 for a file
/// that does not open.
///
/// Thread-safety: concurrent reads are safe, as for a built-in value.
///
/// \code{.cpp}
/// try {
///     OBJScreen().deserializeFromFile(L"no-such-file.obj");
/// } catch (const ObjLoadException& error) {
///     assert(error.status() == 3 && error.message() == L"Could not open the file.");
/// }
/// \endcode
class QUARNSCREEN_EXPORT ObjLoadException : public ZelmoreException {
public:
    /// Stores the kind and the message.
    ObjLoadException(int status, const std::wstring& message);
    ObjLoadException(const ObjLoadException&) = default;
    ObjLoadException& operator=(const ObjLoadException&) = default;
    ~ObjLoadException() override;

    /// Returns the kind of the load error, 1 to 3. It is not an OBJScreen::Status.
    [[nodiscard]] int status() const { return loadStatus; }

private:
    int loadStatus;
};
