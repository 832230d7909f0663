#include "BrepGeometry.h"

#include <array>
#include <cmath>
#include <limits>

namespace corvane::part::reading {
namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr long kHighestDegree = 25;  // of the kernel's splines
constexpr int kDeepest = 8;          // bases of bases
constexpr double kSameParameter = 1e-9;
constexpr double kLeastLength = 1e-100;
/// Ten thousand kilometres. Where the kernel looks for a length or an area among numbers far beyond
/// this, it finds no end.
constexpr double kFarthest = 1e10;

/// Parameters along one direction; a closed one has no ends.
struct Span {
    double first = -kInfinite, last = kInfinite;
    bool smooth = true;
    double once = kInfinite;  ///< around what is closed

    [[nodiscard]] bool holds(double a, double b) const {
        return a < b && a >= first - kSameParameter && b <= last + kSameParameter;
    }
};

/// What is known of a curve (u alone) or surface. The kernel makes none of what is not sound.
struct Piece {
    bool sound = true;
    Span u{}, v{};
};

using Triple = std::array<double, 3>;

Triple direction(TextTokens& text, int dimensions) {
    Triple d{};
    for (int i = 0; i < dimensions; ++i)
        d[static_cast<std::size_t>(i)] = text.real();
    // The kernel squares its length.
    const double length = std::hypot(d[0], d[1], d[2]);
    text.require(length > kLeastLength && length < 1 / kLeastLength);
    return d;
}

double coordinate(TextTokens& text) {
    const double value = text.real();
    text.require(std::abs(value) <= kFarthest);
    return value;
}

void point(TextTokens& text, int dimensions) {
    for (int i = 0; i < dimensions; ++i)
        coordinate(text);
}

/// A point and the axes of a frame: all three in space, two in the plane.
void frame(TextTokens& text, int dimensions) {
    point(text, dimensions);
    const Triple a = direction(text, dimensions), b = direction(text, dimensions);
    if (dimensions == 3) direction(text, dimensions);
    const double turn =
        std::hypot(a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]);
    text.require(turn > 1e-9 * std::hypot(a[0], a[1], a[2]) * std::hypot(b[0], b[1], b[2]));
}

bool poles(TextTokens& text, long number, int dimensions, bool rational) {
    bool sound = true;
    for (long i = 0; i < number && text.good(); ++i) {
        point(text, dimensions);
        if (rational && text.real() <= kLeastLength) sound = false;
    }
    return sound;
}

/// Knots with their multiplicities. The span is that of the parameters.
bool knots(TextTokens& text, long number, long degree, long poleCount, bool periodic, Span& span) {
    bool sound = number >= 2 && poleCount >= 2 && degree >= 1 && degree <= kHighestDegree;
    long sum = 0, firstUses = 0, lastUses = 0;
    double previous = -kInfinite;
    for (long i = 0; i < number && text.good(); ++i) {
        const double knot = text.real();
        lastUses = text.count();
        // A closed curve has no ends, where others may use a knot once more.
        const bool end = !periodic && (i == 0 || i == number - 1);
        if (i == 0) {
            span.first = knot;
            firstUses = lastUses;
        }
        sound = sound && knot > previous && lastUses >= 1 && lastUses <= degree + (end ? 1 : 0);
        span.smooth = span.smooth && (end || lastUses < degree);
        span.last = previous = knot;
        sum += lastUses;
    }
    if (periodic) {
        span = {-kInfinite, kInfinite, span.smooth && firstUses < degree, span.last - span.first};
        return sound && firstUses == lastUses && sum - lastUses == poleCount;
    }
    return sound && sum == poleCount + degree + 1;
}

Piece curve(TextTokens& text, int dimensions, int depth);

Piece splineCurve(TextTokens& text, int dimensions) {
    const bool rational = text.flag(), periodic = text.flag();
    const long degree = text.count(), poleCount = text.count(), knotCount = text.count();
    Piece piece;
    piece.sound = poles(text, poleCount, dimensions, rational);
    piece.sound = knots(text, knotCount, degree, poleCount, periodic, piece.u) && piece.sound;
    return piece;
}

Piece bezierCurve(TextTokens& text, int dimensions) {
    const bool rational = text.flag();
    const long degree = text.count();
    const bool sound = poles(text, degree + 1, dimensions, rational);
    return {sound && degree >= 1 && degree <= kHighestDegree, {0, 1}};
}

/// A basis must be sound.
Piece basisCurve(TextTokens& text, int dimensions, int depth) {
    const Piece piece = curve(text, dimensions, depth + 1);
    text.require(piece.sound);
    return piece;
}

/// A circle, ellipse, parabola or hyperbola.
Piece conic(TextTokens& text, int dimensions, long kind) {
    frame(text, dimensions);
    const double major = coordinate(text);
    const double minor = kind == 3 || kind == 5 ? coordinate(text) : 0.0;
    Piece piece{major >= 0.0 && minor >= 0.0 && (kind != 3 || major >= minor)};
    if (kind <= 3) piece.u.once = 2 * M_PI;
    return piece;
}

Piece curve(TextTokens& text, int dimensions, int depth) {
    text.require(depth < kDeepest);
    const long kind = text.whole(1, 9);
    switch (kind) {
        case 1:
            point(text, dimensions);
            direction(text, dimensions);
            return {};
        case 2:
        case 3:
        case 4:
        case 5:
            return conic(text, dimensions, kind);
        case 6:
            return bezierCurve(text, dimensions);
        case 7:
            return splineCurve(text, dimensions);
        case 8: {
            const double first = text.real(), last = text.real();
            const Piece basis = basisCurve(text, dimensions, depth);
            return {basis.u.holds(first, last), {first, last, basis.u.smooth, basis.u.once}};
        }
        case 9: {
            coordinate(text);
            if (dimensions == 3) direction(text, dimensions);
            const Piece basis = basisCurve(text, dimensions, depth);
            return {basis.u.smooth, basis.u};
        }
        default:
            return {};
    }
}

Piece splineSurface(TextTokens& text) {
    const bool uRational = text.flag(), vRational = text.flag();
    const bool uPeriodic = text.flag(), vPeriodic = text.flag();
    const long uDegree = text.count(), vDegree = text.count();
    const long uPoles = text.count(), vPoles = text.count();
    const long uKnots = text.count(), vKnots = text.count();
    Piece piece;
    for (long i = 0; i < uPoles && text.good(); ++i)
        piece.sound = poles(text, vPoles, 3, uRational || vRational) && piece.sound;
    piece.sound = knots(text, uKnots, uDegree, uPoles, uPeriodic, piece.u) && piece.sound;
    piece.sound = knots(text, vKnots, vDegree, vPoles, vPeriodic, piece.v) && piece.sound;
    return piece;
}

Piece bezierSurface(TextTokens& text) {
    const bool uRational = text.flag(), vRational = text.flag();
    const long uDegree = text.count(), vDegree = text.count();
    Piece piece{
        uDegree >= 1 && uDegree <= kHighestDegree && vDegree >= 1 && vDegree <= kHighestDegree,
        {0, 1},
        {0, 1}};
    for (long i = 0; i <= uDegree && text.good(); ++i)
        piece.sound = poles(text, vDegree + 1, 3, uRational || vRational) && piece.sound;
    return piece;
}

Piece surface(TextTokens& text, int depth);

/// A plane, cylinder, cone, sphere or torus.
Piece elementary(TextTokens& text, long kind) {
    frame(text, 3);
    const double radius = kind == 1 ? 0.0 : coordinate(text);
    const double second = kind == 3 || kind == 5 ? coordinate(text) : 0.0;
    Piece piece{radius >= 0.0};
    if (kind == 3) {  // the half angle of a cone
        const double angle = std::abs(second);
        piece.sound = piece.sound && angle > 1e-9 && angle < M_PI_2 - 1e-9;
    }
    if (kind == 5) piece.sound = piece.sound && second >= 0.0;
    if (kind == 4) piece.v = {-M_PI_2, M_PI_2};
    return piece;
}

Piece basisSurface(TextTokens& text, int depth) {
    const Piece piece = surface(text, depth + 1);
    text.require(piece.sound);
    return piece;
}

Piece surface(TextTokens& text, int depth) {
    text.require(depth < kDeepest);
    const long kind = text.whole(1, 11);
    switch (kind) {
        case 1:
        case 2:
        case 3:
        case 4:
        case 5:
            return elementary(text, kind);
        case 6:
            direction(text, 3);
            return {true, basisCurve(text, 3, depth).u};
        case 7:
            point(text, 3);
            direction(text, 3);
            return {true, {}, basisCurve(text, 3, depth).u};
        case 8:
            return bezierSurface(text);
        case 9:
            return splineSurface(text);
        case 10: {
            const double u1 = text.real(), u2 = text.real(), v1 = text.real(), v2 = text.real();
            const Piece basis = basisSurface(text, depth);
            return {basis.u.holds(u1, u2) && basis.v.holds(v1, v2), {u1, u2}, {v1, v2}};
        }
        case 11:
            coordinate(text);
            return basisSurface(text, depth);
        default:
            return {};
    }
}

}  // namespace

double passCurve(TextTokens& text, int dimensions) {
    return curve(text, dimensions, 0).u.once;
}

void passSurface(TextTokens& text) {
    surface(text, 0);
}

}  // namespace corvane::part::reading
