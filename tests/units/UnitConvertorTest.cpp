#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

#include <corvane/units/CQORUnitConvertor.h>

namespace {

static_assert(sizeof(CQORUnitConvertor) == sizeof(void*));  // nothing but the virtual destructor

// Its products and quotients differ from those of an inverted or a squared factor in the last bit
// wherever such a value can. What is expected comes from another implementation of the arithmetic.
constexpr double kValue = 13.69301;
constexpr std::array kUnchanged = {kValue, kValue, kValue, kValue};
const CQORUnitConvertor kConvertor;

std::uint64_t bits(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

// From metres, into metres, from square metres, into square metres.
std::array<double, 4> converted(QorLong unit, QorLong kind) {
    return {kConvertor.ConversionFromMeters(kValue, unit, kind),
            kConvertor.ConversionInMeters(kValue, unit, kind),
            kConvertor.ConversionFromSquareMeters(kValue, unit, kind),
            kConvertor.ConversionInSquareMeters(kValue, unit, kind)};
}

TEST(UnitConvertor, EachLengthAreaAndAngleIsExactToTheLastBit) {
    const std::array<double, 4> lengths[] = {
        {0x1.abe8147ae147ap+13, 0x1.c0b14b112063cp-7, 0x1.a1e0a4p+23, 0x1.cb760f6db2934p-17},
        {0x1.5653439581062p+10, 0x1.186eceeab43e6p-3, 0x1.0b710cccccccdp+17, 0x1.66f43c0db383p-10},
        kUnchanged,
        {0x1.0d8c2516fabebp+9, 0x1.642653959820dp-2, 0x1.4ba0d4f06ded3p+14, 0x1.217a7e19be6e1p-7},
        {0x1.676586c94e559p+5, 0x1.0b1cbeb032172p+2, 0x1.26c7d9b94547ep+7, 0x1.45a9cddcf6381p+0},
        {0x1.0d8c2516fabebp+9, 0x1.642653959820dp-2, 0x1.4ba0d4f06ded3p+14, 0x1.217a7e19be6e1p-7},
        {0x1.fe1ab832p+36, 0x1.7863fde4b7f8dp-30, 0x1.28eb7992878cap+70, 0x1.43512aabf27dep-63},
        {0x1.98156028p+33, 0x1.d67cfd5de5f7p-27, 0x1.7c0eb017b7be4p+63, 0x1.f92ed2acaae4bp-57},
        {0x1.a1e0a4p+23, 0x1.cb760f6db2934p-17, 0x1.8e84dfe71p+43, 0x1.e1c7ab62332ap-37},
        {0x1.073adc3870de3p+19, 0x1.6cb282a578f69p-12, 0x1.3c43ed931a958p+34,
         0x1.2f8a4a20dc20ap-27},
        {0x1.010f7b0f1e39p+29, 0x1.757335e8ee8dep-22, 0x1.2d9d37fd9e064p+54, 0x1.3e48f345ed6c4p-47},
        kUnchanged};
    const std::array<double, 4> angles[] = {
        {0x1.88469d829dbd9p+9, 0x1.e97299029870bp-3, kValue, kValue},
        {0x1.6fc233aa73df6p+15, 0x1.0509eb3495932p-8, kValue, kValue},
        {0x1.58c6106fccac7p+21, 0x1.1670fae2c1a51p-14, kValue, kValue}};
    using Limits = std::numeric_limits<QorLong>;
    for (const QorLong unit :
         {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, Limits::min(), Limits::max()}) {
        SCOPED_TRACE(unit);
        for (const QorLong kind : {1, 3, -1})
            EXPECT_EQ(converted(unit, kind), unit < 0 || unit > 10 ? kUnchanged : lengths[unit]);
        EXPECT_EQ(converted(unit, 2), unit < 0 || unit > 2 ? kUnchanged : angles[unit]);
        EXPECT_EQ(converted(unit, 0), kUnchanged);
    }
    EXPECT_TRUE(std::signbit(kConvertor.ConversionFromMeters(-0.0, 2, 1)));
}

TEST(UnitConvertor, FromUnitToUnitGoesThroughTheBaseUnit) {
    const CQORUnitConvertor& by = kConvertor;
    EXPECT_EQ(by.ConversionFromOneUnitToAnother(kValue, 1, 0, 3), 0x1.14043e8e50a27p-1);
    EXPECT_EQ(by.ConversionFromOneUnitToAnother(kValue, 2, 0, 2), 0x1.811dac083130bp+15);
    EXPECT_EQ(by.ConversionFromOneUnitToAnotherForArea(kValue, 1, 4, 9), 0x1.d61cb87ffffaap+30);
}

TEST(UnitConvertor, AnArrayConvertsToTheSameBitsAsItsValues) {
    using Limits = std::numeric_limits<double>;
    constexpr double kInfinity = Limits::infinity(), kNaN = Limits::quiet_NaN();
    const std::array values = {kValue, -0.0, kInfinity,      -kInfinity,           Limits::max(),
                               -kNaN,  kNaN, -Limits::min(), Limits::denorm_min(), 25.4,
                               -1e-320};
    const CQORUnitConvertor& by = kConvertor;
    for (QorLong i = 0; i < 5 * 13 * 13; ++i) {
        const QorLong kind = i % 5 - 1, from = i / 5 % 13 - 1, to = i / 65 - 1;
        std::array lengths = values, areas = values;
        by.ConvertValues(lengths, kind, from, to);
        by.ConvertValuesForArea(areas, kind, from, to);
        for (std::size_t at = 0; at < values.size(); ++at) {
            const double length = by.ConversionFromOneUnitToAnother(values[at], kind, from, to);
            const double area =
                by.ConversionFromOneUnitToAnotherForArea(values[at], kind, from, to);
            SCOPED_TRACE(values[at]);
            EXPECT_EQ(bits(lengths[at]), bits(length)) << kind << ": " << from << " to " << to;
            EXPECT_EQ(bits(areas[at]), bits(area)) << kind << ": " << from << " to " << to;
        }
    }
}

TEST(UnitConvertor, MassesAndDensitiesAreExactAndNothingForAnUnknownUnit) {
    // With an unknown code on either side.
    const double masses[6][6] = {
        {},
        {0, kValue, 0x1.c0b14b112063cp-7, 0x1.cb760f6db2934p-17, 0x1.fa781e6e63eecp-16},
        {0, 0x1.abe8147ae147ap+13, kValue, 0x1.c0b14b112063cp-7, 0x1.ee994db7cd973p-6},
        {0, 0x1.a1e0a4p+23, 0x1.abe8147ae147ap+13, kValue, 0x1.e301b5e57ec5ap+4},
        {0, 0x1.7b179513953dfp+22, 0x1.8430b96c1df19p+12, 0x1.8d81c404373dp+2, kValue}};
    const double densities[6][6] = {
        {}, {0, kValue, 0x1.035c5a1155e6ep-11}, {0, 0x1.72234d9156618p+18, kValue}};
    for (QorLong i = 0; i < 36; ++i) {
        const QorLong from = i / 6, to = i % 6;
        SCOPED_TRACE(i);
        EXPECT_EQ(kConvertor.ConversionFromOneUnitToAnotherForMass(kValue, from, to),
                  masses[from][to]);
        EXPECT_EQ(kConvertor.ConversionFromOneUnitToAnotherForDensity(kValue, from, to),
                  densities[from][to]);
        EXPECT_EQ(kConvertor.ConversionFromOneUnitToAnotherForMass(kValue, -1 - from, to), 0);
    }
}

}  // namespace
