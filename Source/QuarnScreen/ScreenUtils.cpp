#include <QuarnScreen/ScreenUtils.h>

#include <log4cxx/logger.h>

#include <cmath>
#include <optional>

#include <QuarnScreen/Detail/Platform/LogText.h>

namespace {

const log4cxx::LoggerPtr logger = log4cxx::Logger::getLogger(std::wstring(L"Quarn.QuarnControl.ScreenUtils"));

constexpr int kCellsPerSide = 5;
constexpr double kCells = kCellsPerSide;
constexpr double kStepInCell = 0.002;  // as a fraction of a cell
constexpr int kMinSamples = 5;

// The distances that a position moves for a step in u and for a step in v.
struct Steps {
    double u;
    double v;
};

// Returns the steps at the corner of a cell; nothing if the screen does not map a position.
std::optional<Steps> stepsAtCell(const IScreenGeometry& screen, int i, int j) {
    const double uLow = i / kCells;
    const double uHigh = (i + kStepInCell) / kCells;
    const double vLow = j / kCells;
    const double vHigh = (j + kStepInCell) / kCells;
    Point<double, 3> corner;
    Point<double, 3> alongU;
    Point<double, 3> alongV;
    const bool isMapped = screen.mapInto3D(Point<double, 2>(uLow, vLow), corner, false) &&
                          screen.mapInto3D(Point<double, 2>(uHigh, vLow), alongU, false) &&
                          screen.mapInto3D(Point<double, 2>(uLow, vHigh), alongV, false);
    if (!isMapped) return std::nullopt;
    return Steps{length(alongU - corner), length(alongV - corner)};
}

}  // namespace

double ScreenUtils::estimateAspectRatioUV(IScreenGeometry& screen) {
    double sumU = 0.0;
    double sumV = 0.0;
    int samples = 0;
    for (int i = 0; i < kCellsPerSide; ++i) {
        for (int j = 0; j < kCellsPerSide; ++j) {
            const std::optional<Steps> steps = stepsAtCell(screen, i, j);
            if (!steps || steps->u == 0.0 || steps->v == 0.0) continue;
            sumU += std::abs(steps->u);
            sumV += std::abs(steps->v);
            ++samples;
        }
    }
    if (samples < kMinSamples) {
        LOG4CXX_WARN(
            logger,
            "calculateAspectRatio failed; using aspect ratio of 1:1 - you probably have a bad UV map!");
        return 1.0;
    }
    const double ratio = sumU / sumV;
    LOG4CXX_INFO(logger, "calculateAspectRatio estimated width/height of screen at "
                             << quarn::detail::logText(ratio)
                             << ". This doesn't have to be exact, 50-200% of the true value is fine.");
    return ratio;
}
