#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <set>
#include <string>

#include <corvane/host/Finding.h>

namespace corvane {
namespace {

/// Part of each fingerprint; to be counted up when the way of making them changes.
constexpr char kVersion = '1';

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Where a number that begins at `start` ends: over digits, a point or comma before a digit, and an
/// exponent.
std::size_t endOfNumber(const std::string& text, std::size_t start) {
    const auto digitAt = [&](std::size_t i) { return i < text.size() && isDigit(text[i]); };
    std::size_t end = start;
    while (digitAt(end) || ((text[end] == '.' || text[end] == ',') && digitAt(end + 1)))
        ++end;
    if (text[end] != 'e' && text[end] != 'E') return end;
    const bool isSigned = text[end + 1] == '-' || text[end + 1] == '+';
    std::size_t exponent = end + (isSigned ? 2 : 1);
    if (!digitAt(exponent)) return end;
    while (digitAt(exponent))
        ++exponent;
    return exponent;
}

/// The message with "#" for each number, so that a new measurement is no new finding.
std::string withoutNumbers(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        if (!isDigit(text[i])) {
            result += text[i++];
            continue;
        }
        if (!result.empty() && (result.back() == '-' || result.back() == '+')) result.pop_back();
        result += '#';
        i = endOfNumber(text, i);
    }
    return result;
}

/// The cell of a grid that a coordinate lies in. Coordinates in drawings are round numbers in mm or
/// inches; the grid's boundaries are moved by an irrational part of its step, so that round numbers
/// lie off them and rounding does not carry one over.
std::int64_t cellOf(double coordinate) {
    constexpr double kStep = 0.5;                     // mm
    constexpr double kOffset = 0.618033988749894848;  // of a step
    constexpr double kFurthest = 1e15;
    if (std::isnan(coordinate)) return INT64_MIN;
    return static_cast<std::int64_t>(
        std::floor(std::clamp(coordinate / kStep, -kFurthest, kFurthest) + kOffset));
}

std::string cellsOf(const Point& point) {
    return std::to_string(cellOf(point.x)) + ',' + std::to_string(cellOf(point.y)) + ',' +
           std::to_string(cellOf(point.z)) + ';';
}

/// What a set of triangles keeps however it is cut into triangles: its box and its centre.
std::string extentOf(const std::vector<Point>& points) {
    Point least = points.front();
    Point greatest = least;
    for (const Point& point : points) {
        least = {std::min(least.x, point.x), std::min(least.y, point.y),
                 std::min(least.z, point.z)};
        greatest = {std::max(greatest.x, point.x), std::max(greatest.y, point.y),
                    std::max(greatest.z, point.z)};
    }
    double total = 0;
    Point sum;
    for (std::size_t i = 0; i + 2 < points.size(); i += 3) {
        const Point &a = points[i], &b = points[i + 1], &c = points[i + 2];
        const Point u{b.x - a.x, b.y - a.y, b.z - a.z};
        const Point v{c.x - a.x, c.y - a.y, c.z - a.z};
        const double area =
            std::hypot(u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x);
        total += area;
        sum = {sum.x + area * (a.x + b.x + c.x), sum.y + area * (a.y + b.y + c.y),
               sum.z + area * (a.z + b.z + c.z)};
    }
    std::string result = cellsOf(least) + cellsOf(greatest);
    if (total > 0) result += cellsOf({sum.x / total / 3, sum.y / total / 3, sum.z / total / 3});
    return result;
}

std::string formOf(const Place& place) {
    std::string result = std::to_string(static_cast<int>(place.kind)) + ':';
    const bool isSurface = place.kind == Place::Kind::Facets || place.kind == Place::Kind::Faces;
    if (isSurface && !place.points.empty()) return result + extentOf(place.points);
    std::set<std::string> parts;
    for (const Point& point : place.points)
        parts.insert(cellsOf(point));
    for (const QorLong face : place.faces)
        parts.insert(std::to_string(face) + ';');
    for (const std::string& part : parts)
        result += part;
    return result;
}

/// FNV-1a with 64 bits: http://www.isthe.com/chongo/tech/comp/fnv/
std::uint64_t hashOf(const std::string& bytes) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : bytes) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 0x100000001b3;
    }
    return hash;
}

}  // namespace

CStringW FingerprintOf(const CStringW& ruleName, const Finding& finding) {
    std::string all{kVersion};
    for (const std::string& part :
         {ruleName.ToUtf8(), std::string(finding.isNote ? "note" : "finding"),
          finding.unit.ToUtf8(), withoutNumbers(finding.message.ToUtf8())}) {
        all += part;
        all += '\0';
    }
    std::set<std::string> places;
    for (const Place& place : finding.places)
        places.insert(formOf(place));
    for (const std::string& place : places)
        all += place + '\n';
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hashOf(all)));
    return CStringW::FromUtf8(digits);
}

}  // namespace corvane
