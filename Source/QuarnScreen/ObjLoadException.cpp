#include <QuarnScreen/ObjLoadException.h>

namespace {
constexpr int kNoLine = -1;
}

ObjLoadException::ObjLoadException(int status, const std::wstring& message)
    : ZelmoreException("", kNoLine, message), loadStatus(status) {}

ObjLoadException::~ObjLoadException() = default;
