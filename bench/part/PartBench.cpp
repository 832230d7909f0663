// Reading of a part beside the bare kernel on the same file, and measures of meshes of a known
// number of facets.
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRep_Builder.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <STEPControl_Reader.hxx>
#include <STEPControl_Writer.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Shape.hxx>
#include <benchmark/benchmark.h>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <gp_Ax2.hxx>
#include <string>

#include "corvane/part/Part.h"

#include "../Memory.h"
#include "walls/Draft.h"
#include "walls/Thickness.h"

namespace {

using corvane::part::Mesh;
using corvane::part::Model;
using corvane::part::Part;
using corvane::part::Vector;
namespace walls = corvane::part::walls;

/// A drilled plate in a STEP file, gone with the benchmark.
class StepFile {
public:
    explicit StepFile(int holes)
        : path_((std::filesystem::temp_directory_path() / "corvane-bench.step").string()) {
        Message::DefaultMessenger()->ChangePrinters().Clear();
        BRep_Builder builder;
        TopoDS_Compound drills;
        builder.MakeCompound(drills);
        for (int x = 0; x < holes; ++x)
            for (int y = 0; y < holes; ++y)
                builder.Add(drills, BRepPrimAPI_MakeCylinder(
                                        gp_Ax2({10.0 * x + 5, 10.0 * y + 5, -1}, {0, 0, 1}), 3, 12)
                                        .Shape());
        const TopoDS_Shape plate = BRepPrimAPI_MakeBox(10.0 * holes, 10.0 * holes, 10.0).Shape();
        STEPControl_Writer writer;
        writer.Transfer(BRepAlgoAPI_Cut(plate, drills).Shape(), STEPControl_AsIs);
        writer.Write(path_.c_str());
    }
    StepFile(const StepFile&) = delete;
    StepFile& operator=(const StepFile&) = delete;
    ~StepFile() { std::filesystem::remove(path_); }

    [[nodiscard]] const std::string& path() const { return path_; }

private:
    std::string path_;
};

/// Makes the file another one: a file that has changed is read again.
void touch(const StepFile& file) {
    std::filesystem::last_write_time(
        file.path(), std::filesystem::last_write_time(file.path()) + std::chrono::seconds(1));
}

TopoDS_Shape readBare(const StepFile& file) {
    STEPControl_Reader reader;
    reader.ReadFile(file.path().c_str());
    reader.TransferRoots();
    return reader.OneShape();
}

void open(benchmark::State& state) {
    const StepFile file(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        touch(file);
        state.ResumeTiming();
        benchmark::DoNotOptimize(Part::open(file.path()));
    }
}

void openBare(benchmark::State& state) {
    const StepFile file(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(readBare(file));
}

/// All that rules of many processes ask of a part that is open.
void analyse(const Part& part) {
    benchmark::DoNotOptimize(part.holes());
    benchmark::DoNotOptimize(part.holePatterns());
    benchmark::DoNotOptimize(part.fillets());
    benchmark::DoNotOptimize(part.sharpCorners());
    benchmark::DoNotOptimize(part.pockets());
    benchmark::DoNotOptimize(part.turned());
    benchmark::DoNotOptimize(part.sheetMetal());
    benchmark::DoNotOptimize(part.walls());
    benchmark::DoNotOptimize(part.gaps());
    benchmark::DoNotOptimize(part.draft({0, 0, 1}));
    benchmark::DoNotOptimize(part.damages());
}

/// Seconds of the processor that the analyses of a part of so many holes take; below 0 where it
/// has others.
double secondsOfAnalyses(const StepFile& file, std::size_t holes) {
    touch(file);
    const auto part = Part::open(file.path()).part;
    const std::clock_t start = std::clock();
    if (!part || part->holes().size() != holes) return -1.0;
    analyse(*part);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// A drilled plate has a face for each hole and six others.
std::size_t facesOf(std::size_t holes) {
    return holes * holes + 6;
}

constexpr std::size_t kSmall = 3;

/// The analyses of a part, or those of a small one as if the time grew with the faces.
void analyses(benchmark::State& state, bool isGrown) {
    const auto holes = static_cast<std::size_t>(state.range(0)),
               measured = isGrown ? kSmall : holes;
    const double times =
        static_cast<double>(facesOf(holes)) / static_cast<double>(facesOf(measured));
    const StepFile file(static_cast<int>(measured));
    for (auto _ : state) {
        const double seconds = secondsOfAnalyses(file, measured * measured);
        if (seconds < 0.0) state.SkipWithError("wrong holes");
        state.SetIterationTime(seconds * times);
    }
}

/// Bytes by which a process grows at most that opens a part, and asks all of it, or reads it bare.
enum class Asked { Bare, Open, All };
void memoryOf(benchmark::State& state, Asked asked) {
    const auto holes = static_cast<std::size_t>(state.range(0));
    // What the kernel keeps once for a process.
    benchmark::DoNotOptimize(readBare(StepFile(1)));
    const StepFile file(static_cast<int>(holes));
    for (auto _ : state) {
        const double grown = bench::growth([&] {
            if (asked == Asked::Bare) return !readBare(file).IsNull();
            const auto part = Part::open(file.path()).part;
            if (part && asked == Asked::All) analyse(*part);
            return part && part->model().faces.size() == facesOf(holes);
        });
        if (grown < 0) state.SkipWithError("wrong faces");
        state.SetIterationTime(grown / 1e9);
    }
    state.SetLabel("bytes");
}

/// A hollow body with waves on its outside, walls of 2 to 4 mm, of about that many facets.
struct Hollow {
    explicit Hollow(std::int64_t facets) {
        const auto rings = static_cast<std::uint32_t>(std::sqrt(static_cast<double>(facets) / 8));
        model.solids.push_back({});
        model.solids[0].number = 1;
        for (const bool outside : {true, false}) {
            corvane::part::Face face;
            face.number = static_cast<int>(model.faces.size()) + 1;
            face.solid = 1;
            face.area = outside ? 31416.0 : 27000.0;
            model.faces.push_back(face);
            addSphere(rings, outside, face.number);
        }
    }

    Model model;
    Mesh mesh;

private:
    void addSphere(std::uint32_t rings, bool outside, int face) {
        constexpr double pi = 3.14159265358979323846;
        const auto base = static_cast<std::uint32_t>(mesh.vertices.size());
        const std::uint32_t columns = 2 * rings;
        for (std::uint32_t i = 0; i <= rings; ++i)
            for (std::uint32_t k = 0; k < columns; ++k) {
                const double up = pi * i / rings, around = 2 * pi * k / columns;
                const double r =
                    outside ? 49 + std::sin(9 * around) * std::pow(std::sin(up), 2) : 46.0;
                mesh.vertices.push_back({r * std::sin(up) * std::cos(around),
                                         r * std::sin(up) * std::sin(around), r * std::cos(up)});
            }
        const auto at = [&](std::uint32_t i, std::uint32_t k) {
            return base + i * columns + k % columns;
        };
        const auto add = [&](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
            if (!outside) std::swap(b, c);
            mesh.triangles.push_back({a, b, c});
            mesh.faces.push_back(face);
        };
        for (std::uint32_t i = 0; i < rings; ++i)
            for (std::uint32_t k = 0; k < columns; ++k) {
                add(at(i, k), at(i + 1, k), at(i + 1, k + 1));
                add(at(i, k), at(i + 1, k + 1), at(i, k + 1));
            }
    }
};

/// The walls of a mesh, or those of a small one as if the time grew with the facets.
void measureWalls(benchmark::State& state, bool isGrown) {
    constexpr std::int64_t kSmallMesh = 10'000;
    const Hollow part(isGrown ? kSmallMesh : state.range(0));
    const double times =
        isGrown ? static_cast<double>(state.range(0)) / static_cast<double>(kSmallMesh) : 1.0;
    for (auto _ : state) {
        const std::clock_t start = std::clock();
        const walls::Skin skin(part.model, part.mesh);
        const auto found = walls::findWalls(skin);
        state.SetIterationTime(times * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
        if (std::abs(found.smallestBySphere.value - 2.0) > 0.1) state.SkipWithError("wrong wall");
    }
}

void findDraft(benchmark::State& state) {
    const Hollow part(state.range(0));
    const walls::Skin skin(part.model, part.mesh);
    for (auto _ : state) {
        benchmark::DoNotOptimize(walls::findDraft(skin, {0, 0, 1}));
    }
}

BENCHMARK(open)
    ->Name("open a STEP part:corvane")
    ->Arg(3)
    ->Arg(15)
    ->Arg(31)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(openBare)
    ->Name("open a STEP part:Open CASCADE")
    ->Arg(3)
    ->Arg(15)
    ->Arg(31)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(analyses, corvane, false)
    ->Name("all analyses of a part:corvane")
    ->Arg(3)
    ->Arg(15)
    ->Arg(31)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(openBare)
    ->Name("all analyses of a part:Open CASCADE's reading")
    ->Arg(3)
    ->Arg(15)
    ->Arg(31)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(analyses, grown, true)
    ->Name("all analyses of a part:linear growth from 3")
    ->Arg(15)
    ->Arg(31)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(memoryOf, open, Asked::Open)
    ->Name("memory of an open part:corvane")
    ->Arg(31)
    ->UseManualTime();
BENCHMARK_CAPTURE(memoryOf, bareOpen, Asked::Bare)
    ->Name("memory of an open part:Open CASCADE's reading")
    ->Arg(31)
    ->UseManualTime();
BENCHMARK_CAPTURE(memoryOf, all, Asked::All)
    ->Name("memory of all analyses:corvane")
    ->Arg(31)
    ->UseManualTime();
BENCHMARK_CAPTURE(memoryOf, bareAll, Asked::Bare)
    ->Name("memory of all analyses:Open CASCADE's reading")
    ->Arg(31)
    ->UseManualTime();
BENCHMARK_CAPTURE(measureWalls, corvane, false)
    ->Name("walls of a mesh:corvane")
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measureWalls, grown, true)
    ->Name("walls of a mesh:linear growth from 10,000")
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(findDraft)
    ->Name("draft of a mesh:corvane")
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
