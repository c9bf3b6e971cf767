#include <Common/ZelmoreException.h>

ZelmoreExceptionBase::ZelmoreExceptionBase(const std::string& file, int line, const std::wstring& message)
    : text(message), sourceFile(file), sourceLine(line) {}

// The destructors are defined here so that each type's information exists once, in the library: a caller's
// catch clause then matches what the library throws.
ZelmoreExceptionBase::~ZelmoreExceptionBase() = default;
ZelmoreException::~ZelmoreException() = default;
ZelmoreParseException::~ZelmoreParseException() = default;
ZelmoreExceptionRuntime::~ZelmoreExceptionRuntime() = default;
