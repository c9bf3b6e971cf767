/// \file
/// The exceptions of the kit.
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <string>

namespace quarn {

/// Who can act on an Error.
enum class ErrorKind {
    BadInput,       ///< An argument or an input is wrong.
    SystemFailure,  ///< Memory, a file system or a stream failed.
};

/// An action that helps against an Error or a Notice. Each application describes it in its own
/// words, such as a command line.
enum class RemedyKind {
    None,
    RepairFile,        ///< Repair the OBJ text of the file.
    ConvertToObj,      ///< Convert the file to an OBJ file.
    MoveOrigin,        ///< Move the origin of the OBJ text of the file to its mesh.
    CheckMesh,         ///< Check the mesh of the file for the places of its defects.
    RaiseMemoryLimit,  ///< Allow more memory.
};

/// A remedy, and the file that it applies to.
struct Remedy {
    RemedyKind kind = RemedyKind::None;
    std::string file = {};
};

/// The parts of an Error.
struct ErrorDetails {
    ErrorKind kind = ErrorKind::BadInput;
    std::string found = {};     ///< What is wrong, as the first half of a sentence.
    std::string expected = {};  ///< What is valid; empty if `found` is a whole sentence.
    std::string file = {};      ///< Input or output that has the error; empty for arguments.
    std::uint64_t line = 0;     ///< Line in that file, 0 for the file as a whole.
    Remedy remedy = {};
};

/// Reports what was found where, and what was expected there instead. Copies share their contents,
/// which never change, so that several threads may use them.
class Error : public std::exception {
public:
    explicit Error(ErrorDetails errorDetails);

    /// Returns "file:line: found, expected ..." without the parts that are empty.
    [[nodiscard]] const char* what() const noexcept override { return contents->message.c_str(); }

    [[nodiscard]] const ErrorDetails& details() const noexcept { return contents->details; }

    /// Returns the same error at another place.
    [[nodiscard]] Error at(const std::string& file, std::uint64_t line) const;

    /// Returns the same error with a remedy.
    [[nodiscard]] Error with(Remedy remedy) const;

private:
    struct Contents {
        ErrorDetails details;
        std::string message;
    };

    std::shared_ptr<const Contents> contents;
};

/// Returns an error that states \p action and the reason why the last system call failed, from
/// `errno`.
[[nodiscard]] Error systemError(const std::string& file, const std::string& action,
                                ErrorKind kind = ErrorKind::SystemFailure);

/// Returns "file:line: text"; without the line if it is 0, and \p text alone if \p file is empty.
[[nodiscard]] std::string withLocation(const std::string& file, std::uint64_t line, const std::string& text);

}  // namespace quarn
