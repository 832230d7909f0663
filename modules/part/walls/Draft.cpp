#include "Draft.h"

#include "../Directions.h"
#include "Reach.h"

namespace corvane::part::walls {
namespace {

/// Sine of a hundredth of a degree: a face that passes it on both sides turns over.
constexpr double kTurns = 1.745e-4;
/// A whole turn around an axis, but for rounding.
constexpr double kWhole = 359.9;

/// The range of slopes of a face, as sines of its angles to the pull.
struct Slopes {
    double least = 2.0, greatest = -2.0;
    double flattest = 2.0;
    double cosine = 0.0;  // of the angle of the flattest, as a sine near 1 does not tell it
    Vector point;
    void add(double slope, double across, const Vector& at) {
        least = std::min(least, slope);
        greatest = std::max(greatest, slope);
        if (std::abs(slope) < flattest) {
            flattest = std::abs(slope);
            cosine = across;
            point = at;
        }
    }
};

/// The extremes of a whole cone, which may be between the samples.
void addCone(const Face& face, const Vector& pull, Slopes& slopes) {
    if (face.surface.kind != SurfaceKind::Cone || face.turn < kWhole) return;
    const double along = dot(face.surface.axis, pull), angle = radians(face.surface.halfAngle);
    const double across = length(pull - face.surface.axis * along) * std::cos(angle);
    const double side = face.concave ? -1.0 : 1.0;
    for (const double turn : {-across, across}) {
        const double slope = side * (turn - along * std::sin(angle));
        slopes.add(slope, std::sqrt(std::max(0.0, 1.0 - slope * slope)), slopes.point);
    }
}

FaceDraft draftOf(const Face& face, const Vector& pull, Slopes slopes) {
    addCone(face, pull, slopes);
    FaceDraft draft;
    draft.face = face.number;
    draft.area = face.area;
    draft.point = slopes.point;
    draft.angle = degrees(std::atan2(slopes.flattest, slopes.cosine));
    const bool up = slopes.greatest > kTurns, down = slopes.least < -kTurns;
    draft.half = up && down ? MouldHalf::Both
                 : up       ? MouldHalf::Pull
                 : down     ? MouldHalf::Opposite
                            : MouldHalf::Either;
    if (up == down) draft.angle = 0.0;
    return draft;
}

std::vector<int> partingEdges(const Model& model, const std::vector<FaceDraft>& drafts) {
    std::vector<const FaceDraft*> of(model.faces.size() + 1, nullptr);
    for (const FaceDraft& draft : drafts)
        of[static_cast<std::size_t>(draft.face)] = &draft;
    std::vector<int> edges;
    for (const Edge& edge : model.edges) {
        const FaceDraft* a = of[static_cast<std::size_t>(edge.faces[0])];
        const FaceDraft* b = of[static_cast<std::size_t>(edge.faces[1])];
        if (!a || !b || a->undercut || b->undercut) continue;
        if (a->half == MouldHalf::Both || b->half == MouldHalf::Both) continue;
        if ((a->half == MouldHalf::Opposite) != (b->half == MouldHalf::Opposite))
            edges.push_back(edge.number);
    }
    return edges;
}

}  // namespace

/// A hundredth of a face is what samples beside its border may be wrong about.
bool Hidden::isUndercut(const Face& face, double size) const {
    constexpr double kPart = 0.01, kSmall = 1e-3;
    const double area = areas[static_cast<std::size_t>(face.number)];
    return area > kPart * face.area && area > kSmall * kSmall * size * size;
}

Draft findDraft(const Skin& skin, const Vector& pull) {
    Draft draft;
    if (!skin.anyClosed()) return draft;
    draft.pull = pull;
    const Model& model = skin.model();
    Reach reach(skin);
    std::vector<Slopes> slopes(model.faces.size() + 1);
    Hidden hidden;
    hidden.areas.assign(slopes.size(), 0.0);
    Samples(skin, Samples::Vertices::All).each([&](const Sample& sample) {
        const Face& face = skin.face(sample.triangle);
        const auto at = static_cast<std::size_t>(face.number);
        Vector point = sample.point, normal = sample.normal;
        if (sample.vertex != Sample::kNoVertex) {
            // The vertex itself is on the border, where curved faces are steepest.
            const Skin::Spot spot =
                skin.exactly(sample.triangle, skin.mesh().vertices[sample.vertex]);
            if (spot.exact) {
                point = spot.point;
                normal = spot.normal;
            }
        }
        slopes[at].add(dot(normal, pull), length(cross(normal, pull)), point);
        if (!reach.isDue() || !reach.isHidden(sample, pull)) return;
        hidden.areas[at] += sample.area;
        hidden.samples.push_back(sample);
    });
    for (const Face& face : model.faces) {
        const Slopes& of = slopes[static_cast<std::size_t>(face.number)];
        if (of.least > of.greatest) continue;
        draft.faces.push_back(draftOf(face, pull, of));
        draft.faces.back().undercut = hidden.isUndercut(face, skin.size());
    }
    draft.partingEdges = partingEdges(model, draft.faces);
    std::stable_sort(draft.faces.begin(), draft.faces.end(),
                     [](const FaceDraft& l, const FaceDraft& r) { return l.angle < r.angle; });
    draft.undercuts = findUndercuts(skin, hidden, pull);
    return draft;
}

Vector findPullDirection(const Skin& skin) {
    constexpr std::size_t kMostDirections = 24, kMostSamples = 5000;
    constexpr double kEqual = 1e-3;  // of the part's area
    if (!skin.anyClosed()) return {};
    std::vector<Sample> all, some;
    double area = 0.0;
    Samples(skin, Samples::Vertices::All).each([&](const Sample& sample) {
        all.push_back(sample);
    });
    for (std::size_t i = 0; i < all.size(); i += all.size() / kMostSamples + 1) {
        some.push_back(all[i]);
        area += all[i].area;
    }
    Vector best;
    double least = 1e300, shortest = 1e300;
    for (const Vector& direction : directionsOf(skin.model(), kMostDirections)) {
        Reach reach(skin);
        double hidden = 0.0, low = 1e300, high = -1e300;
        for (const Sample& sample : some) {
            if (reach.isDue() && reach.isHidden(sample, direction)) hidden += sample.area;
            low = std::min(low, dot(sample.point, direction));
            high = std::max(high, dot(sample.point, direction));
        }
        const bool equal = std::abs(hidden - least) <= kEqual * area;
        if (equal ? high - low < shortest * (1.0 - kEqual) : hidden < least) {
            least = hidden;
            shortest = high - low;
            best = direction;
        }
    }
    const double most = std::max({best.x, best.y, best.z});
    return -std::min({best.x, best.y, best.z}) > most ? -best : best;
}

}  // namespace corvane::part::walls
