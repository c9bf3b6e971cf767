/// \file
/// Failure to load an OBJ file.
#pragma once

#include <Common/Export.h>
#include <Common/ZelmoreException.h>

/// An OBJ file that cannot be loaded. file() is empty and line() is -1.
class QUARNSCREEN_EXPORT ObjLoadException : public ZelmoreException {
public:
    ObjLoadException(int status, const std::wstring& message);
    ObjLoadException(const ObjLoadException&) = default;
    ObjLoadException& operator=(const ObjLoadException&) = default;
    ~ObjLoadException() override;

    /// Kind of the load error, 1 to 3. It is not the status of a screen.
    [[nodiscard]] int status() const { return loadStatus; }

private:
    int loadStatus;
};
