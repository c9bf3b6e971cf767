/// \file
/// What a long operation reports while it runs.
#pragma once

#include <cstdint>
#include <string>

#include "Error.h"

namespace quarn {

enum class NoticeLevel {
    Note,     ///< The result is as requested; the text adds a fact.
    Warning,  ///< The result may differ from what was intended.
};

/// A fact about an input that is no error.
struct Notice {
    NoticeLevel level = NoticeLevel::Note;
    std::string text;
    std::string file = {};   ///< Empty for arguments.
    std::uint64_t line = 0;  ///< Line in that file, 0 for the file as a whole.
    Remedy remedy = {};      ///< An action of the application that helps.
    std::string name = {};   ///< A stable word for programs, or empty.
};

/// Receives the stages and notices of an operation, on the thread that called it. This class
/// ignores all of them; derive from it to show them.
class Observer {
public:
    Observer() = default;
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;
    virtual ~Observer() = default;

    /// Called when a stage begins, such as "reading dome.obj".
    virtual void setStage(const std::string& /*stage*/) {}
    /// Called for each notice.
    virtual void notify(const Notice& /*notice*/) {}
};

}  // namespace quarn
