#include "corvane/part/Part.h"

#include "Cache.h"
#include "Lazy.h"
#include "Recent.h"
#include "SmallestBox.h"
#include "Vec.h"
#include "features/Holes.h"
#include "features/Pockets.h"
#include "features/SheetMetal.h"
#include "features/Turned.h"
#include "reading/Reading.h"
#include "walls/Draft.h"
#include "walls/Thickness.h"

namespace corvane::part {

struct Part::State {
    reading::Result source;
    Lazy<std::vector<Damage>> damages;
    Lazy<Mesh> mesh;
    Lazy<Box> box;
    Lazy<OrientedBox> smallestBox;
    Lazy<std::unique_ptr<const walls::Skin>> skin;
    Lazy<Walls> walls;
    Lazy<Gaps> gaps;
    Lazy<Vector> pullDirection;
    Recent<std::array<double, 3>, Draft> drafts;
    Recent<std::array<double, 4>, std::vector<Overhang>> overhangs;

    /// The surface to shoot at, shared by the measures of walls; null if it cannot be made.
    const walls::Skin* skinOf(const Part& part) {
        return skin
            .get([&] { return std::make_unique<const walls::Skin>(source.model, part.mesh()); })
            .get();
    }

    Lazy<features::Holes> holes;
    Lazy<features::Corners> corners;
    Lazy<Turned> turned;
    Lazy<SheetMetal> sheetMetal;
    const features::Holes& foundHoles(const Part& part) {
        return holes.get([&] { return features::findHoles(part.model(), part.mesh()); });
    }
    const features::Corners& foundCorners(const Part& part) {
        return corners.get([&] { return features::findCorners(part.model(), part.holes()); });
    }
};

namespace {

constexpr double kDeviation = 1.0 / 2000.0;
/// The kernel's mesher never ends on some shapes when it must keep far below the size of an atom.
constexpr double kLeastDeviation = 1e-4;

bool isUnit(const Vector& v) {
    return std::abs(dot(v, v) - 1.0) < 1e-6;
}

std::vector<Damage> allDamages(reading::Result& source) {
    std::vector<Damage> damages = source.model.damages;
    for (const int face : source.shape->invalidFaces())
        damages.push_back({Damage::Kind::InvalidFace,
                           "the border or the surface of this face contradicts itself",
                           {source.model.face(face).point},
                           {face}});
    return damages;
}

}  // namespace

Part::Part(std::unique_ptr<State> state) : state_(std::move(state)) {}
Part::~Part() = default;

OpenResult Part::open(const std::string& path, const std::string& units) {
    return Cache::instance().get(path, units, [&](const std::filesystem::path& file) {
        OpenResult opened;
        auto state = std::make_unique<State>();
        state->source = reading::read(file, units);
        opened.error = state->source.error;
        if (opened.error.empty()) opened.part.reset(new Part(std::move(state)));
        return opened;
    });
}

const Model& Part::model() const {
    return state_->source.model;
}

const std::vector<Damage>& Part::damages() const {
    return state_->damages.get([&] { return allDamages(state_->source); });
}

const Box& Part::box() const {
    return state_->box.get([&] { return state_->source.shape->box({}); });
}

const Mesh& Part::mesh() const {
    return state_->mesh.get([&] {
        Box rough;
        for (const Edge& edge : model().edges)
            for (const Vector& point : edge.points)
                add(rough, point);
        const double size = diagonal(isEmpty(rough) ? box() : rough);
        return state_->source.shape->mesh(std::max(size * kDeviation, kLeastDeviation));
    });
}

const OrientedBox& Part::smallestBox() const {
    return state_->smallestBox.get([&] {
        return findSmallestBox(model(), mesh(), box(), [&](const reading::Frame& frame) {
            return state_->source.shape->box(frame);
        });
    });
}

double Part::volume() const {
    double sum = 0.0;
    for (const Solid& solid : model().solids)
        sum += solid.volume;
    return sum;
}

double Part::area() const {
    double sum = 0.0;
    for (const Face& face : model().faces)
        sum += face.area;
    return sum;
}

Vector Part::centre() const {
    Vector sum;
    for (const Solid& solid : model().solids)
        sum = sum + solid.centre * solid.volume;
    const double all = volume();
    return all > 0.0 ? sum * (1.0 / all) : sum;
}

const Walls& Part::walls() const {
    return state_->walls.get([&] {
        const walls::Skin* skin = state_->skinOf(*this);
        return skin ? walls::findWalls(*skin) : Walls{};
    });
}

const Gaps& Part::gaps() const {
    return state_->gaps.get([&] {
        const walls::Skin* skin = state_->skinOf(*this);
        return skin ? walls::findGaps(*skin) : Gaps{};
    });
}

Vector Part::pullDirection() const {
    return state_->pullDirection.get([&] {
        const walls::Skin* skin = state_->skinOf(*this);
        return skin ? walls::findPullDirection(*skin) : Vector{};
    });
}

Draft Part::draft(const Vector& pull) const {
    const Vector way = unit(pull);
    const walls::Skin* skin = state_->skinOf(*this);
    if (!skin || !isUnit(way)) return {};
    return state_->drafts.get({way.x, way.y, way.z}, [&] { return walls::findDraft(*skin, way); });
}

std::vector<Overhang> Part::overhangs(const Vector& up, double limitAngle) const {
    const Vector way = unit(up);
    const walls::Skin* skin = state_->skinOf(*this);
    if (!skin || !isUnit(way)) return {};
    return state_->overhangs.get({way.x, way.y, way.z, limitAngle},
                                 [&] { return walls::findOverhangs(*skin, way, limitAngle); });
}

const std::vector<Hole>& Part::holes() const {
    return state_->foundHoles(*this).holes;
}

const std::vector<HolePattern>& Part::holePatterns() const {
    return state_->foundHoles(*this).patterns;
}

const std::vector<Fillet>& Part::fillets() const {
    return state_->foundCorners(*this).fillets;
}

const std::vector<SharpCorner>& Part::sharpCorners() const {
    return state_->foundCorners(*this).sharp;
}

const std::vector<Pocket>& Part::pockets() const {
    return state_->foundCorners(*this).pockets;
}

const Turned& Part::turned() const {
    return state_->turned.get([&] { return features::findTurned(model()); });
}

const SheetMetal& Part::sheetMetal() const {
    return state_->sheetMetal.get([&] { return features::findSheetMetal(model(), holes()); });
}

}  // namespace corvane::part
