/// \file
/// Type names of objects.
#pragma once

#include <string>

#include <Common/Export.h>

/// An object that knows the name of its concrete type.
///
/// \code{.cpp}
/// const FlatScreen screen;
/// const ITypeid& object = screen;
/// assert(object.getType() == "class FlatScreen");
/// \endcode
class QUARNSCREEN_EXPORT ITypeid {
public:
    virtual ~ITypeid();

    /// Returns the name of the concrete type, such as "class FlatScreen".
    ///
    /// The names are stored in saved files and never change. Safe on any number of threads.
    [[nodiscard]] virtual const std::string& getType() const = 0;
};
