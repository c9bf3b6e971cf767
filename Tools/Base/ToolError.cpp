#include "Base/ToolError.h"

#include <CLI/Error.hpp>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <new>
#include <system_error>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include <Common/Detail/NodeText.h>
#include <Common/TextConversion.h>
#include <Common/ZelmoreException.h>

#include "Base/Diagnostics.h"

namespace quarn {

namespace {

constexpr const char* kOutOfMemory = "the memory does not suffice";

ToolError notWellFormed(const XMLCh* message, std::uint64_t line = 0) {
    return {.found = "not well-formed XML: " + toUtf8(fromXmlText(message)), .line = line};
}

// The library's file and line name a place in its source, and no place in the input.
ToolError refusedByLibrary(const ZelmoreExceptionBase& error) {
    if (!error.message().empty()) return {.found = toUtf8(error.message())};
    return {.found = "the screen cannot be read (" + error.file() + ":" + std::to_string(error.line()) + ")"};
}

std::string sentenceOf(const ToolError& error) {
    std::string sentence = error.found;
    if (!error.expected.empty()) sentence += ", expected " + error.expected;
    if (!error.remedy.empty()) sentence += "; mend it by: " + error.remedy;
    return sentence;
}

}  // namespace

ToolError systemError(const std::string& file, const std::string& action, ExitCode code) {
    return {.code = code, .found = action + ": " + std::generic_category().message(errno), .file = file};
}

ToolError currentError() {
    try {
        throw;
    } catch (const ToolError& error) {
        return error;
    } catch (const ZelmoreExceptionBase& error) {
        return refusedByLibrary(error);
    } catch (const CLI::ParseError& error) {
        return {.found = std::string(error.what()) + " (see --help)"};
    } catch (const xercesc::SAXParseException& error) {
        return notWellFormed(error.getMessage(), error.getLineNumber());
    } catch (const xercesc::SAXException& error) {
        return notWellFormed(error.getMessage());
    } catch (const xercesc::XMLException& error) {
        return notWellFormed(error.getMessage());
    } catch (const xercesc::DOMException& error) {
        return notWellFormed(error.getMessage());
    } catch (const xercesc::OutOfMemoryException&) {
        return {.code = ExitCode::SystemFailed, .found = kOutOfMemory};
    } catch (const std::bad_alloc&) {
        return {.code = ExitCode::SystemFailed, .found = kOutOfMemory};
    } catch (const std::exception& error) {
        return {.code = ExitCode::SystemFailed, .found = error.what()};
    } catch (...) {
        return {.code = ExitCode::SystemFailed, .found = "an error of an unknown kind"};
    }
}

ExitCode reportCurrentError() noexcept {
    try {
        const ToolError error = currentError();
        writeErrorLine(atPlace(error.file, error.line, sentenceOf(error)));
        return error.code;
    } catch (...) {
        std::fputs("error: the memory does not suffice\n", stderr);
        return ExitCode::SystemFailed;
    }
}

}  // namespace quarn
