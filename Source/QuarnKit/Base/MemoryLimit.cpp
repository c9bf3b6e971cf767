#include "MemoryLimit.h"

#include <array>
#include <charconv>
#include <fstream>
#include <limits>
#include <string>

namespace quarn {

namespace {

constexpr std::uint64_t kUnitStep = 1024;
constexpr std::string_view kUnits = "KMGT";
// The limit if the system does not report its free memory; every current machine has that much.
constexpr std::uint64_t kFallbackLimit = kUnitStep * kUnitStep * kUnitStep;

std::optional<std::uint64_t> availableMemory() {
    std::ifstream file("/proc/meminfo");
    std::string name;
    std::uint64_t kibibytes = 0;
    std::string unit;
    while (file >> name >> kibibytes) {
        if (name == "MemAvailable:") return kibibytes * kUnitStep;
        std::getline(file, unit);
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::uint64_t> parseMemorySize(std::string_view text) {
    std::uint64_t bytes = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), bytes);
    const std::string_view unit(end, static_cast<std::size_t>(text.data() + text.size() - end));
    if (error != std::errc() || bytes == 0 || unit.size() > 1) return std::nullopt;
    if (unit.empty()) return bytes;

    const std::size_t steps = kUnits.find(unit.front());
    if (steps == std::string_view::npos) return std::nullopt;
    for (std::size_t i = 0; i <= steps; ++i) {
        if (bytes > std::numeric_limits<std::uint64_t>::max() / kUnitStep) return std::nullopt;
        bytes *= kUnitStep;
    }
    return bytes;
}

std::string memorySizeText(std::uint64_t bytes) {
    constexpr std::array kNames = {" bytes", " KiB", " MiB", " GiB", " TiB"};
    auto size = static_cast<double>(bytes);
    std::size_t unit = 0;
    while (size >= static_cast<double>(kUnitStep) && unit + 1 < kNames.size()) {
        size /= static_cast<double>(kUnitStep);
        ++unit;
    }
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), size,
                                   std::chars_format::fixed, unit == 0 ? 0 : 1);
    return std::string(digits.data(), end.ptr) + kNames.at(unit);
}

std::uint64_t defaultMemoryLimit() {
    const auto available = availableMemory();
    return available ? *available / 4 * 3 : kFallbackLimit;
}

}  // namespace quarn
