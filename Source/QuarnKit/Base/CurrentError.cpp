#include "CurrentError.h"

#include <exception>
#include <new>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include <Common/Detail/Assert.h>
#include <Common/Detail/NodeText.h>
#include <Common/TextConversion.h>
#include <Common/ZelmoreException.h>

namespace quarn {

namespace {

Error malformedXmlError(const XMLCh* message, std::uint64_t line = 0) {
    return Error({.found = "not well-formed XML: " + toUtf8(detail::fromXmlText(message)), .line = line});
}

// The file and line of the library's exception refer to its source, not to the input.
Error libraryError(const ZelmoreExceptionBase& error) {
    if (!error.message().empty()) return Error({.found = toUtf8(error.message())});
    return Error(
        {.found = "the screen cannot be read (" + error.file() + ":" + std::to_string(error.line()) + ")"});
}

Error systemFailure(const std::string& found) {
    return Error({.kind = ErrorKind::SystemFailure, .found = found});
}

}  // namespace

Error currentError() {
    QUARN_ASSERT(std::current_exception() != nullptr);
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const ZelmoreExceptionBase& error) {
        return libraryError(error);
    } catch (const xercesc::SAXParseException& error) {
        return malformedXmlError(error.getMessage(), error.getLineNumber());
    } catch (const xercesc::SAXException& error) {
        return malformedXmlError(error.getMessage());
    } catch (const xercesc::XMLException& error) {
        return malformedXmlError(error.getMessage());
    } catch (const xercesc::DOMException& error) {
        return malformedXmlError(error.getMessage());
    } catch (const xercesc::OutOfMemoryException&) {
        return systemFailure("out of memory");
    } catch (const std::bad_alloc&) {
        return systemFailure("out of memory");
    } catch (const std::exception& error) {
        return systemFailure(error.what());
    } catch (...) {
        return systemFailure("an error of an unknown kind");
    }
}

}  // namespace quarn
