#include "Base/LogOutput.h"

#include <log4cxx/appenderskeleton.h>
#include <log4cxx/level.h>
#include <log4cxx/logger.h>
#include <log4cxx/logmanager.h>
#include <log4cxx/spi/loggerrepository.h>
#include <log4cxx/spi/loggingevent.h>
#include <memory>

#include "Base/LogWarnings.h"

namespace quarn::tool {

namespace {

// The first logger that is created would read a configuration from the working folder. The library
// creates its loggers before main(), so this has to run before them.
struct LogConfiguration {
    LogConfiguration() { log4cxx::LogManager::getLoggerRepository()->setConfigured(true); }
};
constexpr int kFirstPriorityOfPrograms = 101;
__attribute__((init_priority(kFirstPriorityOfPrograms))) const LogConfiguration logConfiguration;

class WarningAppender : public log4cxx::AppenderSkeleton {
public:
    WarningAppender() { setThreshold(log4cxx::Level::getWarn()); }
    void append(const log4cxx::spi::LoggingEventPtr& event, log4cxx::helpers::Pool& /*pool*/) override {
        addLogWarning(event->getRenderedMessage());
    }
    void close() override {}
    [[nodiscard]] bool requiresLayout() const override { return false; }
};

}  // namespace

void installLogOutput() {
    const auto root = log4cxx::Logger::getRootLogger();
    root->setLevel(log4cxx::Level::getWarn());
    root->addAppender(std::make_shared<WarningAppender>());
}

}  // namespace quarn::tool
