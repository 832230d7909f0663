#include "ReferenceData.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "common/Guard.h"

namespace collector {

using namespace qor_db;
using qor_db::driver::failure;
using qor_db::driver::guarded;

namespace {

// Lengths that differ by less are the same: far below what any part can show.
constexpr double kLengthTolerance = 1e-6;  // mm

// Beyond every drill. Of two lengths that are larger still, a difference may be lost in rounding.
constexpr double kLargestDrill = 1e6;  // mm

Status checkLength(double length) {
    if (std::isfinite(length) && length >= 0) return {};
    return failure(ErrorCode::BadParameter, u"A length is a number of millimetres, not below 0.");
}

std::vector<Value> around(double length) {
    return {length - kLengthTolerance, length + kLengthTolerance};
}

CStringW asParameter(std::u16string_view name) {
    std::u16string text(name);
    // Drivers that read a text up to its first zero would find a name that was not asked for.
    std::replace(text.begin(), text.end(), u'\0', u'\uFFFD');
    return text;
}

CStringW folded(std::u16string_view name) {
    std::u16string text = asParameter(name).Std();
    for (char16_t& unit : text) {
        if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit - u'A' + u'a');
    }
    return text;
}

// For a message, which no name makes endless.
CStringW quoted(std::u16string_view name) {
    constexpr std::size_t kLongestName = 80;
    const bool whole = name.size() <= kLongestName;
    return u"\"" + CStringW(name.substr(0, kLongestName)) + (whole ? u"\"" : u"...\"");
}

CStringW lengthText(double length) {
    CStringW text;
    text.Format(u"%g mm", length);
    return text;
}

// "M8 × 1" is written in many ways; case apart.
CStringW threadKey(std::u16string_view designation) {
    CStringW key = asParameter(designation);
    key.Remove(u' ');
    key.Replace(u'\u00D7', u'x');
    return key;
}

// True when `key` is the designation of this coarse thread with its pitch written out: "m8x1.25".
bool namesPitch(const CStringW& key, const ThreadHole& coarse) {
    CStringW full;
    full.Format(u"m%gx%g", coarse.nominal, coarse.pitch);
    return coarse.series == u"coarse" && key == full;
}

// The row of a name: as it is written, which is found at once, or else in any case.
template <typename Item, typename Text>
Outcome<Item> named(Lookups& lookups, Lookup asWritten, Lookup inAnyCase, const CStringW& key,
                    const Text& name) {
    Outcome<std::vector<Item>> found = lookups.all<Item>(asWritten, {key});
    if (!found.ok()) return found.status();
    if (!found->empty()) return std::move(found->front());
    return lookups.first<Item>(inAnyCase, {folded(key)}, name);
}

}  // namespace

void ReferenceData::connect(IDatabaseConnection* database, Status reason) noexcept {
    lookups_.connect(database, std::move(reason));
}

Outcome<std::vector<DrillSize>> ReferenceData::drillSizes(bool preferredOnly) {
    return guarded(
        [&] { return lookups_.all<DrillSize>(Lookup::Drills, {preferredOnly ? 1 : 0}); });
}

Outcome<DrillSize> ReferenceData::nearestDrill(double diameter, bool preferredOnly) {
    return guarded([&]() -> Outcome<DrillSize> {
        if (const Status status = checkLength(diameter); !status.ok()) return status;
        std::vector<Value> parameters(4, std::min(diameter, kLargestDrill));
        parameters.front() = parameters.back() = preferredOnly ? 1 : 0;
        return lookups_.first<DrillSize>(Lookup::NearestDrill, parameters,
                                         [&] { return u"a drill of " + lengthText(diameter); });
    });
}

Outcome<ThreadHole> ReferenceData::thread(std::u16string_view designation) {
    return guarded([&]() -> Outcome<ThreadHole> {
        const CStringW key = threadKey(designation);
        const auto name = [&] { return u"the thread " + quoted(designation); };
        const auto find = [&](const CStringW& text) {
            return named<ThreadHole>(lookups_, Lookup::ThreadAsWritten, Lookup::Thread, text, name);
        };
        Outcome<ThreadHole> found = find(key);
        const int pitch = key.FindOneOf(u"xX");
        if (found.status().code != ErrorCode::NotFound || pitch < 0) return found;
        Outcome<ThreadHole> coarse = find(key.Left(pitch));
        if (coarse.ok() && !namesPitch(folded(key), *coarse)) return Lookups::notFound(name());
        return coarse;
    });
}

Outcome<std::vector<ThreadHole>> ReferenceData::threads(double nominal) {
    return guarded([&]() -> Outcome<std::vector<ThreadHole>> {
        if (const Status status = checkLength(nominal); !status.ok()) return status;
        Outcome<std::vector<ThreadHole>> found =
            lookups_.all<ThreadHole>(Lookup::Threads, around(nominal));
        if (found.ok() && found->empty())
            return Lookups::notFound(u"threads of " + lengthText(nominal));
        return found;
    });
}

Outcome<ClearanceHole> ReferenceData::clearanceHole(double nominal, ClearanceFit fit) {
    return guarded([&]() -> Outcome<ClearanceHole> {
        if (const Status status = checkLength(nominal); !status.ok()) return status;
        const Outcome<Row> row = lookups_.first<Row>(Lookup::ClearanceHole, around(nominal), [&] {
            return u"a bolt of " + lengthText(nominal);
        });
        if (!row.ok()) return row.status();
        const std::size_t column = fit == ClearanceFit::Fine     ? 1
                                   : fit == ClearanceFit::Medium ? 2
                                                                 : 3;
        ClearanceHole hole{.source = row->text(4)};
        if (!Lookups::readNumber(*row, 0, hole.nominal) ||
            !Lookups::readNumber(*row, column, hole.diameter))
            return Lookups::noNumber(*row);
        return hole;
    });
}

Outcome<std::vector<Material>> ReferenceData::materials() {
    return guarded([&] { return lookups_.all<Material>(Lookup::Materials, {}); });
}

Outcome<Material> ReferenceData::material(std::u16string_view name) {
    return guarded([&] {
        return named<Material>(lookups_, Lookup::MaterialAsWritten, Lookup::Material,
                               asParameter(name), [&] { return u"the material " + quoted(name); });
    });
}

Outcome<BendRadius> ReferenceData::bendRadius(std::u16string_view material, double thickness,
                                              BendDirection direction) {
    return guarded([&]() -> Outcome<BendRadius> {
        if (const Status status = checkLength(thickness); !status.ok()) return status;
        const CStringW key = folded(material);
        // A range holds its upper bound, also when a calculation has missed it by a rounding.
        const double upper = thickness - kLengthTolerance;
        const Outcome<Row> row = lookups_.first<Row>(
            Lookup::BendRadius,
            {upper, upper, direction == BendDirection::Across ? u"across" : u"along", key, key},
            [&] { return u"bends of " + quoted(material) + u" at " + lengthText(thickness); });
        if (!row.ok()) return row.status();
        BendRadius bend{row->text(0), thickness, 1, row->text(3)};
        if (Lookups::readNumber(*row, 1, bend.radius)) return bend;
        if (!(*row)[1].isNull() || !Lookups::readNumber(*row, 2, bend.radius))
            return Lookups::noNumber(*row);
        bend.radius *= thickness;
        return bend;
    });
}

Outcome<WallThickness> ReferenceData::minimumWall(std::u16string_view process,
                                                  std::u16string_view material) {
    return guarded([&] {
        return lookups_.first<WallThickness>(
            Lookup::Wall, {folded(process), folded(material)}, [&] {
                const bool any = material.empty() || folded(material) == u"any";
                return u"walls by " + quoted(process) + u" in " +
                       (any ? u"any material" : quoted(material));
            });
    });
}

Outcome<std::vector<WallThickness>> ReferenceData::minimumWalls() {
    return guarded([&] { return lookups_.all<WallThickness>(Lookup::Walls, {}); });
}

}  // namespace collector
