#include "Reports/CheckReport.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "Base/Diagnostics.h"

namespace quarn {

namespace {

nlohmann::ordered_json numberOrNull(std::uint64_t number) {
    if (number == 0) return nullptr;
    return number;
}

// As in "triangles 3, 7 and more"; empty where no triangle is meant.
std::string trianglesText(const Finding& finding) {
    std::string numbers;
    std::uint64_t told = 0;
    for (const Place& place : finding.places) {
        if (place.triangle == 0) continue;
        numbers += (numbers.empty() ? "" : ", ") + std::to_string(place.triangle);
        ++told;
    }
    if (told == 0) return {};
    return std::string(told == 1 ? "triangle " : "triangles ") + numbers +
           (told < finding.count || !finding.isCountWhole ? " and more" : "");
}

std::string lineOf(const CheckReport& report, const Finding& finding) {
    const std::string triangles = trianglesText(finding);
    return atPlace(printable(report.file), finding.places.empty() ? 0 : finding.places.front().line,
                   (finding.severity == Severity::Note ? "note: " : "") + finding.text +
                       (triangles.empty() ? "" : ": " + triangles) + " (" + finding.hint + ")\n");
}

}  // namespace

std::uint64_t CheckReport::problemCount() const {
    return static_cast<std::uint64_t>(
        std::count_if(findings.begin(), findings.end(),
                      [](const Finding& finding) { return finding.severity == Severity::Problem; }));
}

std::string reportText(const CheckReport& report) {
    std::string text;
    for (const Finding& finding : report.findings) text += lineOf(report, finding);
    const std::uint64_t problems = report.problemCount();
    return text + (problems == 0 ? "no findings" : counted(problems, "finding")) + " in " +
           counted(report.triangles, "triangle") + "\n";
}

nlohmann::ordered_json reportJson(const CheckReport& report) {
    nlohmann::ordered_json json = {{"command", "check"},
                                   {"screen", report.file},
                                   {"unit", report.unit},
                                   {"triangles", report.triangles},
                                   {"problems", report.problemCount()},
                                   {"findings", nlohmann::ordered_json::array()}};
    for (const Finding& finding : report.findings) {
        auto places = nlohmann::ordered_json::array();
        for (const Place& place : finding.places)
            places.push_back(
                {{"triangle", numberOrNull(place.triangle)}, {"line", numberOrNull(place.line)}});
        json["findings"].push_back({{"name", finding.name},
                                    {"severity", finding.severity == Severity::Note ? "note" : "problem"},
                                    {"count", finding.count},
                                    {"isCountWhole", finding.isCountWhole},
                                    {"places", places},
                                    {"text", finding.text},
                                    {"hint", finding.hint}});
    }
    return json;
}

}  // namespace quarn
