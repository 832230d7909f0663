#include "run/FindingCollector.h"

#include <algorithm>
#include <cmath>

namespace {

std::optional<double> finite(const std::optional<double>& number) {
    return number && std::isfinite(*number) ? number : std::nullopt;
}

results::Place placeOf(const corvane::Place& place) {
    // Both enumerations have the same members in the same order.
    results::Place result{
        static_cast<results::Place::Kind>(place.kind), place.label.ToUtf8(), {}, {}};
    for (const corvane::Point& point : place.points)
        result.points.push_back({point.x, point.y, point.z});
    std::ranges::copy_if(place.faces, std::back_inserter(result.faces),
                         [](QorLong face) { return face >= 1; });
    return result;
}

bool isFinite(const results::Place& place) {
    return std::ranges::all_of(place.points, [](const std::array<double, 3>& point) {
        return std::ranges::all_of(point, [](double value) { return std::isfinite(value); });
    });
}

}  // namespace

void FindingCollector::AddFinding(const CStringW& text) {
    corvane::Finding finding;
    finding.message = text;
    ReportFinding(finding);
}

void FindingCollector::ReportFinding(const corvane::Finding& finding) {
    results::Finding result;
    result.message = finding.message.ToUtf8();
    result.measured = finite(finding.measured);
    result.limit = finite(finding.limit);
    result.unit = finding.unit.ToUtf8();
    result.isNote = finding.isNote;
    for (const corvane::Place& place : finding.places) {
        results::Place own = placeOf(place);
        if (isFinite(own)) result.places.push_back(std::move(own));
    }
    const CStringW& given = finding.fingerprint;
    result.fingerprint =
        (given.IsEmpty() ? corvane::FingerprintOf(ruleName_, finding) : given).ToUtf8();
    any_ = any_ || !finding.isNote;
    findings_.push_back(std::move(result));
}
