#include "Reports/CheckReport.h"

#include <algorithm>

#include <QuarnKit/Base/PrintableText.h>

#include "Base/Diagnostics.h"
#include "Base/ErrorReport.h"

namespace quarn::tool {

namespace {

// A number that counts from 1, or null for 0.
Json numberOrNull(std::uint64_t number) {
    return number == 0 ? Json() : Json(number);
}

// As in "triangles 3, 7 and more"; empty if no place has a triangle.
std::string trianglesText(const Finding& finding) {
    std::string numbers;
    std::uint64_t listed = 0;
    for (const Place& place : finding.places) {
        if (place.triangle == 0) continue;
        numbers += (numbers.empty() ? "" : ", ") + std::to_string(place.triangle);
        ++listed;
    }
    if (listed == 0) return {};
    return std::string(listed == 1 ? "triangle " : "triangles ") + numbers +
           (listed < finding.count || !finding.isCountExact ? " and more" : "");
}

// The hint of a finding, a command, or both.
std::string hintOf(const Finding& finding) {
    const std::string command = remedyCommand(finding.remedy);
    if (command.empty()) return finding.hint;
    return finding.hint + (finding.hint.empty() ? "try: " : ": ") + command;
}

std::string lineOf(const CheckReport& report, const Finding& finding) {
    const std::string triangles = trianglesText(finding);
    return withLocation(printable(report.file), finding.places.empty() ? 0 : finding.places.front().line,
                        (finding.severity == Severity::Note ? "note: " : "") + finding.text +
                            (triangles.empty() ? "" : ": " + triangles) + " (" + hintOf(finding) + ")\n");
}

Json findingJson(const Finding& finding) {
    Json places = Json::array();
    for (const Place& place : finding.places)
        places.append(
            Json::object({{"triangle", numberOrNull(place.triangle)}, {"line", numberOrNull(place.line)}}));
    return Json::object({{"name", finding.name},
                         {"severity", finding.severity == Severity::Note ? "note" : "problem"},
                         {"count", finding.count},
                         {"isCountExact", finding.isCountExact},
                         {"places", places},
                         {"text", finding.text},
                         {"hint", hintOf(finding)}});
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

Json reportJson(const CheckReport& report) {
    Json findings = Json::array();
    for (const Finding& finding : report.findings) findings.append(findingJson(finding));
    return Json::object({{"command", "check"},
                         {"screen", report.file},
                         {"unit", report.unit},
                         {"triangles", report.triangles},
                         {"problems", report.problemCount()},
                         {"findings", findings}});
}

}  // namespace quarn::tool
