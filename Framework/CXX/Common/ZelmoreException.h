/// \file
/// The exceptions of the library.
#pragma once

#include <string>

#include <Common/Export.h>

/// Base of every exception that the library throws.
///
/// It carries a text for humans and the source file and line of the throw. The numbers are part of the
/// library's behaviour: callers tell failures apart by them, so they are written out and do not follow the
/// source code.
///
/// Intended: this family does not derive from std::exception, as a reader would expect. Catch it by its own
/// name.
///
/// Thread-safety: that of a value.
class QUARNSCREEN_EXPORT ZelmoreExceptionBase {
public:
    ZelmoreExceptionBase(const std::string& file, int line, const std::wstring& message);
    ZelmoreExceptionBase(const ZelmoreExceptionBase&) = default;
    ZelmoreExceptionBase& operator=(const ZelmoreExceptionBase&) = default;
    virtual ~ZelmoreExceptionBase();

    /// The text for humans. May be empty.
    [[nodiscard]] const std::wstring& message() const { return text; }
    /// Name of the source unit that threw, without an extension. May be empty.
    [[nodiscard]] const std::string& file() const { return sourceFile; }
    /// Line that identifies the place of the throw, -1 where there is none.
    [[nodiscard]] int line() const { return sourceLine; }

private:
    std::wstring text;
    std::string sourceFile;
    int sourceLine;
};

/// A failure that input or use of the library caused.
class QUARNSCREEN_EXPORT ZelmoreException : public ZelmoreExceptionBase {
public:
    using ZelmoreExceptionBase::ZelmoreExceptionBase;
    ZelmoreException(const ZelmoreException&) = default;
    ZelmoreException& operator=(const ZelmoreException&) = default;
    ~ZelmoreException() override;
};

/// An XML element that cannot be read.
class QUARNSCREEN_EXPORT ZelmoreParseException : public ZelmoreException {
public:
    using ZelmoreException::ZelmoreException;
    ZelmoreParseException(const ZelmoreParseException&) = default;
    ZelmoreParseException& operator=(const ZelmoreParseException&) = default;
    ~ZelmoreParseException() override;
};

/// A request that the library does not serve, such as a screen type that it does not know.
class QUARNSCREEN_EXPORT ZelmoreExceptionRuntime : public ZelmoreExceptionBase {
public:
    using ZelmoreExceptionBase::ZelmoreExceptionBase;
    ZelmoreExceptionRuntime(const ZelmoreExceptionRuntime&) = default;
    ZelmoreExceptionRuntime& operator=(const ZelmoreExceptionRuntime&) = default;
    ~ZelmoreExceptionRuntime() override;
};
