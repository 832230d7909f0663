#include "BrepText.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <set>
#include <utility>
#include <vector>

#include "BrepGeometry.h"

namespace corvane::part::reading {
namespace {

/// Shapes within shapes, which the kernel enters one by one.
constexpr int kDeepest = 200;
constexpr long kHighestPower = 1000;  // of a place in a product of places
constexpr std::size_t kShapeFlags = 7;
constexpr double kSlack = 1e-6;  // of the ends of a closed edge

/// Follows the kernel's reader of this form (BRepTools_ShapeSet and what it is made of) word by
/// word.
class Checker {
public:
    explicit Checker(std::string_view text) : text_(text) {}

    std::string fault();

private:
    template <typename Pass>
    void section(std::string_view title, long& number, Pass pass) {
        text_.require(text_.word() == title);
        number = text_.count();
        for (long i = 0; i < number && text_.good(); ++i)
            pass();
    }
    void passVersion();
    void passPlace();
    void passPolygon();
    void passChain();
    void passMesh();
    void passShape();
    void passVertex();
    void passEdge();
    void passEdgeEntry(long kind, double& once);
    void passRange(double once);
    void passFace();
    int passReference(std::string_view word);

    // Numbers of things that were read before; 0 is none.
    void curve() { text_.whole(0, curves_); }
    void curve2d() { text_.whole(0, curves2d_); }
    void surface() { text_.whole(0, surfaces_); }
    void place() { text_.whole(0, places_); }

    TextTokens text_;
    int version_ = 0;
    long places_ = 0, curves2d_ = 0, curves_ = 0, polygons_ = 0, chains_ = 0, surfaces_ = 0,
         meshes_ = 0, shapes_ = 0;
    using Product = std::vector<std::pair<long, long>>;
    std::vector<bool> isSimplePlace_;
    std::set<Product> products_;
    std::vector<double> once_;     // of each curve, the parameters that go once around
    std::vector<long> lastNodes_;  // of each chain
    std::vector<long> meshNodes_;  // of each mesh
    std::vector<int> depths_;      // of each shape
};

std::string Checker::fault() {
    passVersion();
    section("Locations", places_, [this] { passPlace(); });
    section("Curve2ds", curves2d_, [this] { passCurve(text_, 2); });
    section("Curves", curves_, [this] { once_.push_back(passCurve(text_, 3)); });
    section("Polygon3D", polygons_, [this] { passPolygon(); });
    section("PolygonOnTriangulations", chains_, [this] { passChain(); });
    section("Surfaces", surfaces_, [this] { passSurface(text_); });
    section("Triangulations", meshes_, [this] { passMesh(); });
    section("TShapes", shapes_, [this] { passShape(); });
    passReference(text_.word());
    if (text_.good()) return {};
    return "the BREP file is damaged at line " + std::to_string(text_.lineNumber());
}

/// Titles of other programs may come first.
void Checker::passVersion() {
    while (text_.good() && version_ == 0) {
        text_.require(!text_.atEnd());
        std::string_view line = text_.line();
        while (line.ends_with('\r'))
            line.remove_suffix(1);
        if (line == "CASCADE Topology V1, (c) Matra-Datavision") version_ = 1;
        if (line == "CASCADE Topology V2, (c) Matra-Datavision") version_ = 2;
        if (line == "CASCADE Topology V3, (c) Open Cascade") version_ = 3;
    }
}

/// A matrix, or a product of earlier ones. The kernel keeps equal places once, and none that moves
/// nothing, and so would count these in another way than the numbers below.
void Checker::passPlace() {
    const bool isSimple = text_.whole(1, 2) == 1;
    if (isSimple) {
        text_.reals(12);
    } else {
        Product product;
        for (long next = text_.count(); next != 0; next = text_.count()) {
            const auto index = static_cast<std::size_t>(next - 1);
            const long power = text_.whole(-kHighestPower, kHighestPower);
            text_.require(index < isSimplePlace_.size() && isSimplePlace_[index] && power != 0 &&
                          (product.empty() || product.back().first != next));
            product.emplace_back(next, power);
        }
        text_.require(!product.empty() && (product.size() > 1 || product.front().second != 1) &&
                      products_.insert(product).second);
    }
    isSimplePlace_.push_back(isSimple);
}

void Checker::passPolygon() {
    const long nodes = text_.count();
    const bool hasParameters = text_.flag();
    text_.reals(1 + 3 * nodes + (hasParameters ? nodes : 0));
}

void Checker::passChain() {
    const long nodes = text_.count();
    long last = 0;
    for (long i = 0; i < nodes && text_.good(); ++i) {
        const long node = text_.count();
        text_.require(node > 0);
        last = std::max(last, node);
    }
    text_.require(text_.word() == "p");
    text_.real();
    if (text_.flag()) text_.reals(nodes);
    lastNodes_.push_back(last);
}

void Checker::passMesh() {
    const long nodes = text_.count(), triangles = text_.count();
    const bool hasParameters = text_.flag(), hasNormals = version_ >= 3 && text_.flag();
    text_.reals(1 + 3 * nodes + (hasParameters ? 2 * nodes : 0));
    for (long i = 0; i < 3 * triangles && text_.good(); ++i)
        text_.whole(1, nodes);
    if (hasNormals) text_.reals(3 * nodes);
    meshNodes_.push_back(nodes);
}

void Checker::passShape() {
    const std::string_view kind = text_.word();
    if (kind == "Ve") {
        passVertex();
    } else if (kind == "Ed") {
        passEdge();
    } else if (kind == "Fa") {
        passFace();
    } else {
        text_.require(kind == "Wi" || kind == "Sh" || kind == "So" || kind == "CS" || kind == "Co");
    }
    text_.require(text_.word().size() == kShapeFlags);
    int depth = 0;
    for (std::string_view word = text_.word(); text_.good() && word != "*"; word = text_.word())
        depth = std::max(depth, passReference(word));
    text_.require(depth < kDeepest);
    depths_.push_back(depth + 1);
}

/// A shape that was read before, counted from the last one, with its place.
int Checker::passReference(std::string_view word) {
    long back = 0;
    const char* const end = word.data() + word.size();
    text_.require(word.size() > 1 && std::string_view("+-ie").find(word.front()) != word.npos);
    if (!text_.good()) return 0;
    const auto [stop, error] = std::from_chars(word.data() + 1, end, back);
    text_.require(error == std::errc() && stop == end && back >= 1 && back <= shapes_);
    const auto index = static_cast<std::size_t>(shapes_ - back);
    text_.require(index < depths_.size());
    place();
    return text_.good() ? depths_[index] : 0;
}

void Checker::passVertex() {
    text_.reals(4);
    for (bool more = true; more && text_.good();) {
        text_.real();
        const long kind = text_.whole(0, 3);
        if (kind == 1) curve();
        if (kind == 2) curve2d();
        if (kind == 3) text_.real();
        if (kind >= 2) surface();
        if (kind > 0) place();
        more = kind > 0;
    }
}

void Checker::passEdge() {
    text_.real();
    for (int i = 0; i < 3; ++i)
        text_.flag();
    double once = std::numeric_limits<double>::infinity();
    for (long kind = text_.whole(0, 7); kind > 0; kind = text_.whole(0, 7))
        passEdgeEntry(kind, once);
}

void Checker::passRange(double once) {
    const double first = text_.real(), last = text_.real();
    text_.require(last - first <= once * (1 + kSlack));
}

/// The kernel would follow an edge that winds around for ever, so it goes `once` around at most.
void Checker::passEdgeEntry(long kind, double& once) {
    if (kind == 1) {
        const auto number = static_cast<std::size_t>(text_.whole(0, curves_));
        if (number > 0 && text_.good()) once = once_[number - 1];
        place();
        passRange(once);
    } else if (kind <= 3) {
        curve2d();
        if (kind == 3) {
            curve2d();
            text_.word();
        }
        surface();
        place();
        passRange(once);
        if (version_ == 2) text_.reals(4);
    } else if (kind == 4) {
        text_.word();
        for (int i = 0; i < 2; ++i) {
            surface();
            place();
        }
    } else if (kind == 5) {
        text_.whole(0, polygons_);
        place();
    } else {
        long last = 0;
        for (long i = 6; i <= kind; ++i)
            if (const long chain = text_.whole(0, chains_))
                last = std::max(last, lastNodes_[static_cast<std::size_t>(chain - 1)]);
        if (const long mesh = text_.whole(0, meshes_))
            text_.require(last <= meshNodes_[static_cast<std::size_t>(mesh - 1)]);
        place();
    }
}

void Checker::passFace() {
    const long kind = text_.whole(0, 2);
    if (kind == 2) {
        text_.whole(1, meshes_);
        return;
    }
    text_.real();
    surface();
    place();
    // Its mesh stands alone on the next line, which is empty without one.
    text_.line();
    text_.line();
}

}  // namespace

std::string brepFault(std::string_view text) {
    return Checker(text).fault();
}

}  // namespace corvane::part::reading
