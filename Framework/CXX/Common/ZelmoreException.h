/// \file
/// The exceptions of the library.
#pragma once

#include <string>

#include <Common/Export.h>

/// Base class of every exception that the library defines.
///
/// An exception has a message for users, and the source file and line of the throw. The line
/// numbers are part of the behavior, as callers distinguish failures by them. They are literal
/// constants and do not follow the source code.
///
/// Thread-safety: concurrent reads are safe, as for a built-in value.
///
/// \note Intended: the family does not derive from std::exception; a reader would expect it to.
///       Catch it by its own name.
///
/// \code{.cpp}
/// try {
///     ScreenGeometryFactory::createScreenGeometry("class NoScreen");
/// } catch (const ZelmoreExceptionBase& error) {
///     assert(error.line() == 48 && !error.message().empty());
/// }
/// \endcode
class QUARNSCREEN_EXPORT ZelmoreExceptionBase {
public:
    /// Stores the source file, the line and the message.
    ZelmoreExceptionBase(const std::string& file, int line, const std::wstring& message);
    ZelmoreExceptionBase(const ZelmoreExceptionBase&) = default;
    ZelmoreExceptionBase& operator=(const ZelmoreExceptionBase&) = default;
    virtual ~ZelmoreExceptionBase();

    /// Returns the message for users. May be empty.
    [[nodiscard]] const std::wstring& message() const { return text; }
    /// Returns the path of the source file that threw, without extension. May be empty.
    [[nodiscard]] const std::string& file() const { return sourceFile; }
    /// Returns the line that identifies the throw; -1 if there is none.
    [[nodiscard]] int line() const { return sourceLine; }

private:
    std::wstring text;
    std::string sourceFile;
    int sourceLine;
};

/// A failure that input to the library or its use caused.
///
/// \code{.cpp}
/// try {
///     (void)OBJScreen().getClosestPoint({0.0, 0.0, 0.0});
/// } catch (const ZelmoreException& error) {
///     assert(error.message() == L"There are no values in the KDTree" && error.line() == 668);
/// }
/// \endcode
class QUARNSCREEN_EXPORT ZelmoreException : public ZelmoreExceptionBase {
public:
    using ZelmoreExceptionBase::ZelmoreExceptionBase;
    ZelmoreException(const ZelmoreException&) = default;
    ZelmoreException& operator=(const ZelmoreException&) = default;
    ~ZelmoreException() override;
};

/// An XML element that cannot be read.
///
/// \code{.cpp}
/// auto* document = xercesc::DOMImplementation::getImplementation()->createDocument();
/// try {
///     STLScreen().deserialize(document->createElement(u"ScreenGeometry"));
/// } catch (const ZelmoreParseException& error) { assert(error.line() == 378); }
/// document->release();
/// \endcode
class QUARNSCREEN_EXPORT ZelmoreParseException : public ZelmoreException {
public:
    using ZelmoreException::ZelmoreException;
    ZelmoreParseException(const ZelmoreParseException&) = default;
    ZelmoreParseException& operator=(const ZelmoreParseException&) = default;
    ~ZelmoreParseException() override;
};

/// A request that the library does not support, such as an unknown screen type.
///
/// \code{.cpp}
/// try {
///     ScreenGeometryFactory::createScreenGeometry("class NoScreen");
/// } catch (const ZelmoreExceptionRuntime& error) {
///     assert(error.message() == L"Screen type [ class NoScreen ] not implemented");
/// }
/// \endcode
class QUARNSCREEN_EXPORT ZelmoreExceptionRuntime : public ZelmoreExceptionBase {
public:
    using ZelmoreExceptionBase::ZelmoreExceptionBase;
    ZelmoreExceptionRuntime(const ZelmoreExceptionRuntime&) = default;
    ZelmoreExceptionRuntime& operator=(const ZelmoreExceptionRuntime&) = default;
    ~ZelmoreExceptionRuntime() override;
};
