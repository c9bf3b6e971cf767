#include "Base/ErrorReport.h"

#include <cstdio>

#include <QuarnKit/Base/CurrentError.h>

#include "Base/Diagnostics.h"
#include "Base/ShellQuote.h"

namespace quarn::tool {

namespace {

std::string sentenceOf(const ErrorDetails& error) {
    std::string sentence = error.found;
    if (!error.expected.empty()) sentence += ", expected " + error.expected;
    if (error.remedy.kind == RemedyKind::RaiseMemoryLimit) sentence += ", or a larger --max-memory";
    const std::string command = remedyCommand(error.remedy);
    const char* const option = error.remedy.kind == RemedyKind::RepairFile ? "use --repair, or " : "";
    if (!command.empty()) sentence += "; " + (option + ("try: " + command));
    return sentence;
}

ExitCode report(const Error& error) {
    const ErrorDetails& details = error.details();
    writeErrorLine(withLocation(details.file, details.line, sentenceOf(details)));
    return details.kind == ErrorKind::BadInput ? ExitCode::BadInput : ExitCode::SystemFailure;
}

}  // namespace

std::string remedyCommand(const Remedy& remedy) {
    switch (remedy.kind) {
        case RemedyKind::RepairFile:
            return "quarnscreen convert " + shellQuote(remedy.file) + " -o repaired.obj";
        case RemedyKind::ConvertToObj:
            return "quarnscreen convert " + shellQuote(remedy.file) + " -o mesh.obj";
        case RemedyKind::MoveOrigin:
            return "quarnscreen convert " + shellQuote(remedy.file) + " --origin auto -o moved.obj";
        case RemedyKind::CheckMesh:
            return "quarnscreen check " + shellQuote(remedy.file);
        default:
            return {};
    }
}

ExitCode reportCurrentError() noexcept {
    try {
        try {
            throw;
        } catch (const NegativeResult& result) {
            static_cast<void>(report(result));
            return ExitCode::NegativeResult;
        } catch (...) {
            return report(currentError());
        }
    } catch (...) {
        std::fputs("error: out of memory\n", stderr);
        return ExitCode::SystemFailure;
    }
}

}  // namespace quarn::tool
