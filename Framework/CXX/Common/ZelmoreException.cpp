#include <Common/ZelmoreException.h>

ZelmoreExceptionBase::ZelmoreExceptionBase(const std::string& file, int line, const std::wstring& message)
    : text(message), sourceFile(file), sourceLine(line) {}

// Define the destructors here, so that the type information of each class exists once, in the
// library. The catch clause of a caller then matches what the library throws.
ZelmoreExceptionBase::~ZelmoreExceptionBase() = default;
ZelmoreException::~ZelmoreException() = default;
ZelmoreParseException::~ZelmoreParseException() = default;
ZelmoreExceptionRuntime::~ZelmoreExceptionRuntime() = default;
