#include "SolidProgram.h"

#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepFilletAPI_MakeChamfer.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepOffsetAPI_MakeThickSolid.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <Bnd_Box.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "Fuzz.h"
#include "part/FeatureShapes.h"
#include "part/Shapes.h"

namespace fuzz {
namespace {

/// The kernel joins and cuts in a time that grows with the square of what there is.
constexpr int kMostCommands = 10;
constexpr std::size_t kMostNumbers = 24;

/// Beyond ten kilometres nothing but the kernel is tried.
double within(double number) {
    constexpr double kMost = 1e7;
    return std::isnan(number) ? 0.0 : std::clamp(number, -kMost, kMost);
}

class Maker {
public:
    void run(std::string_view command) {
        const std::string_view word = take(command, ' ');
        const auto known = commands().find(word);
        if (known == commands().end()) return;
        numbers_.clear();
        while (!command.empty() && numbers_.size() < kMostNumbers)
            numbers_.push_back(
                within(std::strtod(std::string(take(command, ' ')).c_str(), nullptr)));
        try {
            (this->*known->second)();
        } catch (const Standard_Failure&) {
        }
    }
    [[nodiscard]] const TopoDS_Shape& shape() const { return shape_; }

private:
    using Command = void (Maker::*)();
    static const std::map<std::string_view, Command>& commands() {
        static const std::map<std::string_view, Command> all{
            {"box", &Maker::box},           {"cut", &Maker::cut},
            {"turn", &Maker::turn},         {"hole", &Maker::hole},
            {"bore", &Maker::bore},         {"pin", &Maker::pin},
            {"ball", &Maker::ball},         {"pocket", &Maker::pocket},
            {"bend", &Maker::bend},         {"wall", &Maker::wall},
            {"fillet", &Maker::fillet},     {"chamfer", &Maker::chamfer},
            {"scale", &Maker::scale},       {"rotate", &Maker::rotate},
            {"mirror", &Maker::mirror},     {"beside", &Maker::beside},
            {"drilled", &Maker::drilled},   {"milled", &Maker::milled},
            {"machined", &Maker::machined}, {"shaft", &Maker::shaft},
            {"strip", &Maker::strip},       {"cup", &Maker::cup}};
        return all;
    }

    [[nodiscard]] double number(std::size_t place) const {
        return place < numbers_.size() ? numbers_[place] : 0.0;
    }
    [[nodiscard]] gp_Pnt point(std::size_t place) const {
        return {number(place), number(place + 1), number(place + 2)};
    }
    [[nodiscard]] gp_Dir direction(std::size_t place) const {
        return {number(place), number(place + 1), number(place + 2)};
    }
    [[nodiscard]] unsigned seed() const {
        return static_cast<unsigned>(std::fmod(std::abs(number(0)), 4096.0));
    }
    void join(const TopoDS_Shape& other) {
        shape_ = shape_.IsNull() ? other : shapes::fuse(shape_, other);
    }
    void takeAway(const TopoDS_Shape& other) {
        if (!shape_.IsNull()) shape_ = shapes::cut(shape_, other);
    }
    [[nodiscard]] double top() const {
        Bnd_Box box;
        BRepBndLib::Add(shape_, box);
        return box.IsVoid() ? 0.0 : box.CornerMax().Z();
    }
    /// One of the faces or edges of the shape, whatever the number.
    [[nodiscard]] TopoDS_Shape part(TopAbs_ShapeEnum kind, double number) const {
        TopTools_IndexedMapOfShape all;
        TopExp::MapShapes(shape_, kind, all);
        if (all.IsEmpty() || !std::isfinite(number)) throw Standard_Failure("nothing there");
        return all(static_cast<int>(std::fmod(std::abs(number), all.Extent())) + 1);
    }
    [[nodiscard]] std::vector<shapes::Profile> profile(std::size_t from) const {
        std::vector<shapes::Profile> profile;
        for (; from + 1 < numbers_.size(); from += 2)
            profile.push_back({number(from), number(from + 1)});
        if (profile.empty()) throw Standard_Failure("no profile");
        return profile;
    }
    void transform(const gp_Trsf& by) {
        if (!shape_.IsNull()) shape_ = shapes::transformed(shape_, by);
    }

    void box() { join(shapes::box(number(0), number(1), number(2), point(3))); }
    void cut() { takeAway(shapes::box(number(0), number(1), number(2), point(3))); }
    void turn() { join(shapes::revolved({{0, 0, 0}, {0, 0, 1}}, profile(0))); }
    void hole() {
        takeAway(shapes::revolved({{number(0), number(1), top()}, {0, 0, -1}}, profile(2)));
    }
    void bore() { takeAway(shapes::cylinder({point(0), direction(3)}, number(6), number(7))); }
    void pin() { join(shapes::cylinder({point(0), direction(3)}, number(6), number(7))); }
    void ball() { takeAway(BRepPrimAPI_MakeSphere(point(0), number(3)).Shape()); }
    void pocket() {
        takeAway(shapes::pocketTool({number(0), number(1), top() - number(4)}, number(2), number(3),
                                    number(4) + 10, number(5), number(6)));
    }
    void bend() {
        const double t = number(0), r = number(1), wide = number(3), flat = number(4);
        const double angle = number(2) * std::acos(-1.0) / 180;
        join(shapes::box(flat, wide, t, {-flat, 0, 0}));
        const gp_Ax1 axis({0, 0, t + r}, {0, -1, 0});
        const TopoDS_Face end = BRepBuilderAPI_MakeFace(
            BRepBuilderAPI_MakePolygon({0, 0, 0}, {0, wide, 0}, {0, wide, t}, {0, 0, t}, true)
                .Wire());
        join(BRepPrimAPI_MakeRevol(end, axis, angle).Shape());
        gp_Trsf by;
        by.SetRotation(axis, angle);
        join(shapes::transformed(shapes::box(flat, wide, t), by));
    }
    void wall() {
        TopTools_ListOfShape open;
        open.Append(part(TopAbs_FACE, number(1)));
        BRepOffsetAPI_MakeThickSolid hollow;
        hollow.MakeThickSolidByJoin(shape_, open, number(0), 1e-3);
        if (hollow.IsDone()) shape_ = hollow.Shape();
    }
    void fillet() {
        BRepFilletAPI_MakeFillet fillet(shape_);
        const TopoDS_Edge edge = TopoDS::Edge(part(TopAbs_EDGE, number(1)));
        if (numbers_.size() > 2)
            fillet.Add(number(0), number(2), edge);
        else
            fillet.Add(number(0), edge);
        fillet.Build();
        if (fillet.IsDone()) shape_ = fillet.Shape();
    }
    void chamfer() {
        BRepFilletAPI_MakeChamfer chamfer(shape_);
        chamfer.Add(number(0), TopoDS::Edge(part(TopAbs_EDGE, number(1))));
        chamfer.Build();
        if (chamfer.IsDone()) shape_ = chamfer.Shape();
    }
    void scale() {
        gp_Trsf by;
        by.SetScale({0, 0, 0}, number(0));
        transform(by);
    }
    void rotate() {
        gp_Trsf by;
        by.SetRotation({{0, 0, 0}, direction(0)}, number(3));
        transform(by);
    }
    void mirror() {
        gp_Trsf by;
        by.SetMirror(gp_Ax2({3, 4, 5}, {1, 2, 3}));
        transform(by);
    }
    void beside() {
        gp_Trsf by;
        by.SetTranslation({number(0), 0, 0});
        if (!shape_.IsNull()) shape_ = shapes::compound({shape_, shape_.Moved(by, false)});
    }
    void drilled() { shape_ = shapes::drilledBlock(seed()).shape; }
    void milled() { shape_ = shapes::milledBlock(seed()).shape; }
    void machined() { shape_ = shapes::machinedBlock(seed()).shape; }
    void shaft() { shape_ = shapes::shaft(seed()).shape; }
    void strip() { shape_ = shapes::bentStrip(seed()).shape; }
    void cup() { shape_ = shapes::draftedCup(seed()).shape; }

    TopoDS_Shape shape_;
    std::vector<double> numbers_;
};

}  // namespace

TopoDS_Shape solidOf(std::string_view program) {
    Maker maker;
    for (int count = 0; count < kMostCommands && !program.empty(); ++count)
        maker.run(take(program, '\n'));
    return maker.shape();
}

}  // namespace fuzz
