// Conversion of single values and of whole arrays, beside udunits2 with a converter made beforehand
// and beside a bare loop with the factors at hand.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <span>
#include <vector>

#include <corvane/units/CQORUnitConvertor.h>

#ifdef CORVANE_BENCH_UDUNITS
#include <udunits2.h>
#endif

namespace {

constexpr std::size_t kValues = 10'000;

std::vector<double> lengths() {
    std::vector<double> values(kValues);
    for (std::size_t i = 0; i < kValues; ++i)
        values[i] = 0.37 * static_cast<double>(i);
    return values;
}

void count(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kValues));
}

template <typename Convert>
void eachValue(benchmark::State& state, Convert convert) {
    const std::vector<double> values = lengths();
    std::vector<double> results(kValues);
    for (auto _ : state) {
        for (std::size_t i = 0; i < kValues; ++i)
            results[i] = convert(values[i]);
        benchmark::DoNotOptimize(results.data());
        benchmark::ClobberMemory();
    }
    count(state);
}

void length(benchmark::State& state) {
    eachValue(state, [by = CQORUnitConvertor()](double value) {
        return by.ConversionFromOneUnitToAnother(value, QORUnitKind_Length,
                                                 QORLengthUnit_Millimetre, QORLengthUnit_Inch);
    });
}

// In place, so each round begins with a copy: the time of that is in it.
template <typename Convert>
void wholeArray(benchmark::State& state, Convert convert) {
    const std::vector<double> values = lengths();
    std::vector<double> results(kValues);
    for (auto _ : state) {
        std::ranges::copy(values, results.begin());
        convert(std::span(results));
        benchmark::ClobberMemory();
    }
    count(state);
}

void lengthArray(benchmark::State& state) {
    wholeArray(state, [by = CQORUnitConvertor()](std::span<double> values) {
        by.ConvertValues(values, QORUnitKind_Length, QORLengthUnit_Millimetre, QORLengthUnit_Inch);
    });
}

void lengthArrayFromMetres(benchmark::State& state) {
    wholeArray(state, [by = CQORUnitConvertor()](std::span<double> values) {
        by.ConvertValues(values, QORUnitKind_Length, QORLengthUnit_Metre, QORLengthUnit_Inch);
    });
}

void areaArray(benchmark::State& state) {
    wholeArray(state, [by = CQORUnitConvertor()](std::span<double> values) {
        by.ConvertValuesForArea(values, QORUnitKind_Length, QORLengthUnit_Millimetre,
                                QORLengthUnit_Inch);
    });
}

void area(benchmark::State& state) {
    eachValue(state, [by = CQORUnitConvertor()](double value) {
        return by.ConversionFromOneUnitToAnotherForArea(
            value, QORUnitKind_Length, QORLengthUnit_Millimetre, QORLengthUnit_Inch);
    });
}

void mass(benchmark::State& state) {
    eachValue(state, [by = CQORUnitConvertor()](double value) {
        return by.ConversionFromOneUnitToAnotherForMass(value, QORMassUnit_Gram, QORMassUnit_Pound);
    });
}

// What an operation on arrays could reach.
void bareLoop(benchmark::State& state) {
    eachValue(state, [](double value) { return value / 1000 * 39.370078740157; });
}

#ifdef CORVANE_BENCH_UDUNITS

class Converter {
public:
    Converter() {
        ut_set_error_message_handler(ut_ignore);
        system_ = ut_read_xml(nullptr);
        from_ = ut_parse(system_, "mm", UT_UTF8);
        to_ = ut_parse(system_, "inch", UT_UTF8);
        converter_ = ut_get_converter(from_, to_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        cv_free(converter_);
        ut_free(to_);
        ut_free(from_);
        ut_free_system(system_);
    }

    const cv_converter* get() const { return converter_; }

private:
    ut_system* system_ = nullptr;
    ut_unit* from_ = nullptr;
    ut_unit* to_ = nullptr;
    cv_converter* converter_ = nullptr;
};

void lengthPeer(benchmark::State& state) {
    const Converter converter;
    eachValue(state,
              [&converter](double value) { return cv_convert_double(converter.get(), value); });
}

void lengthPeerArray(benchmark::State& state) {
    const Converter converter;
    const std::vector<double> values = lengths();
    std::vector<double> results(kValues);
    for (auto _ : state) {
        cv_convert_doubles(converter.get(), values.data(), kValues, results.data());
        benchmark::ClobberMemory();
    }
    count(state);
}

BENCHMARK(lengthPeer)->Name("length:udunits2");
BENCHMARK(lengthPeerArray)->Name("array of lengths:udunits2");

#endif

BENCHMARK(length)->Name("length:corvane");
BENCHMARK(lengthArray)->Name("array of lengths:corvane");
BENCHMARK(lengthArrayFromMetres)->Name("array of lengths from metres:corvane");
BENCHMARK(area)->Name("area:corvane");
BENCHMARK(areaArray)->Name("array of areas:corvane");
BENCHMARK(mass)->Name("mass:corvane");
BENCHMARK(bareLoop)->Name("array of lengths:loop");

}  // namespace
