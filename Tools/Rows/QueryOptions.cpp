#include "Rows/QueryOptions.h"

#include <algorithm>
#include <thread>

namespace quarn::tool {

std::size_t defaultThreadCount() {
    return std::clamp(std::thread::hardware_concurrency(), 1U, static_cast<unsigned int>(kMaxThreads));
}

}  // namespace quarn::tool
