#include "StlPrecision.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace corvane::part::reading {

void WrittenDigits::add(std::string_view text, std::size_t axis) {
    const std::size_t mark = text.find_first_of("eE");
    int exponent = 0;
    if (mark != std::string_view::npos) {
        std::string_view tail = text.substr(mark + 1);
        if (!tail.empty() && tail.front() == '+') tail.remove_prefix(1);
        std::from_chars(tail.data(), tail.data() + tail.size(), exponent);
    }
    int digits = 0, fraction = 0;
    bool afterPoint = false;
    for (const char c : text.substr(0, mark)) {
        afterPoint = afterPoint || c == '.';
        if (c < '0' || c > '9') continue;
        digits += digits > 0 || c != '0' ? 1 : 0;
        fraction += afterPoint ? 1 : 0;
    }
    if (fraction_ < 0) fraction_ = fraction;
    isEven_ = isEven_ && fraction == fraction_;
    // Zero has no decade, and what a float cannot hold tells nothing of the others.
    if (digits == 0 || std::abs(exponent) > std::numeric_limits<float>::max_exponent10) return;
    digits_ = std::max(digits_, digits);
    const int place = exponent - fraction, decade = place + digits - 1;
    Axis& own = axes_[axis];
    if (decade > own.decade) own = {decade, place};
    if (decade == own.decade) own.place = std::min(own.place, place);
}

double WrittenDigits::step(std::size_t axis) const {
    const Axis& own = axes_[axis];
    if (own.decade == kNone) return 0.0;
    // A program that leaves out zeros at the end has as many digits as it shows anywhere, and no
    // fewer than six, which is what streams of C++ and C's %g write; with one digit after each
    // point, that is a zero often enough to be such a program.
    constexpr int kFewest = 6;
    const bool hasZeros = isEven_ && fraction_ > 1;
    return std::pow(10.0, hasZeros
                              ? own.place
                              : std::min(own.place, own.decade + 1 - std::max(digits_, kFewest)));
}

double precisionOf(const Mesh& mesh, double factor, const WrittenDigits& digits) {
    Vector largest;
    for (const Vector& v : mesh.vertices)
        largest = {std::max(largest.x, std::abs(v.x)), std::max(largest.y, std::abs(v.y)),
                   std::max(largest.z, std::abs(v.z))};
    double sum = 0.0;
    std::size_t axis = 0;
    for (const double along : {largest.x, largest.y, largest.z}) {
        const auto written = static_cast<float>(along / factor);
        const double below = std::nextafter(written, 0.0F);
        // A text rounds by half of its last place. Floats were often computed with, which takes
        // a whole step and more.
        const double off = factor * std::max(double{written} - below, 0.5 * digits.step(axis++));
        sum += off * off;
    }
    return std::sqrt(sum);
}

}  // namespace corvane::part::reading
