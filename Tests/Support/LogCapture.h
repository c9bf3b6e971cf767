/// \file
/// Messages of a logger during a test.
#pragma once

#include <log4cxx/appenderskeleton.h>
#include <log4cxx/level.h>
#include <log4cxx/logger.h>
#include <log4cxx/spi/loggingevent.h>

#include <memory>
#include <string>
#include <vector>

namespace quarn::test {

/// One message as it reached the logger.
struct LogRecord {
    std::string level;
    std::string message;
    std::string file;      ///< Source file that the message names.
    std::string function;  ///< Function that the message names.
    std::string logger;    ///< Name of the logger.
    int line = 0;          ///< Line of the file.
};

/// Keeps each message in a list. It is log4cxx that locks it.
class RecordingAppender : public log4cxx::AppenderSkeleton {
public:
    std::vector<LogRecord> records;

    void close() override {}
    [[nodiscard]] bool requiresLayout() const override { return false; }

protected:
    void append(const log4cxx::spi::LoggingEventPtr& event, log4cxx::helpers::Pool& /*pool*/) override {
        const auto& location = event->getLocationInformation();
        records.push_back({event->getLevel()->toString(), event->getRenderedMessage(), location.getFileName(),
                           location.getMethodName(), event->getLoggerName(), location.getLineNumber()});
    }
};

/// While it lives, it records the messages of a named logger at the given level and above.
class LogCapture {
public:
    explicit LogCapture(const std::wstring& name, const log4cxx::LevelPtr& level = log4cxx::Level::getAll())
        : logger(log4cxx::Logger::getLogger(name)), previousLevel(logger->getLevel()) {
        logger->setLevel(level);
        logger->setAdditivity(false);
        logger->addAppender(appender);
    }
    ~LogCapture() {
        logger->removeAppender(appender);
        logger->setAdditivity(true);
        logger->setLevel(previousLevel);
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    [[nodiscard]] const std::vector<LogRecord>& records() const { return appender->records; }

private:
    log4cxx::LoggerPtr logger;
    log4cxx::LevelPtr previousLevel;
    std::shared_ptr<RecordingAppender> appender = std::make_shared<RecordingAppender>();
};

}  // namespace quarn::test
