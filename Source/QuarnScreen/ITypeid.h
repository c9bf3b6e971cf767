/// \file
/// Type names of objects.
#pragma once

#include <string>

#include <Common/Export.h>

/// An object that knows the name of its concrete type.
class QUARNSCREEN_EXPORT ITypeid {
public:
    virtual ~ITypeid();

    /// Name of the concrete type, such as "class FlatScreen". The names stand in saved files and never
    /// change. Safe on any thread.
    [[nodiscard]] virtual const std::string& getType() const = 0;
};
