#include "Claims.h"

namespace corvane::part::facets {

bool Claims::goesOnAlike(const std::vector<std::uint32_t>& strips, bool inSteps) const {
    const auto isOwn = [&](std::uint32_t strip) {
        return std::find(strips.begin(), strips.end(), strip) != strips.end();
    };
    std::vector<double> steps;
    for (const std::uint32_t strip : strips)
        for (const Neighbour& next : strips_.neighboursOf(strip))
            if (isOwn(next.strip)) steps.push_back(next.angle);
    if (steps.empty()) return false;
    const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
    std::nth_element(steps.begin(), middle, steps.end());
    double alike = 0.0, all = 0.0;
    for (const std::uint32_t strip : strips)
        for (const Neighbour& next : strips_.neighboursOf(strip)) {
            if (isOwn(next.strip)) continue;
            all += next.length;
            if (isOpen(next.strip) && next.angle <= kSmoothAngle &&
                (!inSteps || isAlike(next.angle, *middle)) &&
                isAlike(strips_[strip].area, strips_[next.strip].area))
                alike += next.length;
        }
    // Less is a row of roundings too, each of which has an end or a flat face on one side.
    constexpr double kMost = 0.6;
    return alike > kMost * all;
}

}  // namespace corvane::part::facets
