// Writes the report of a results file, each part with a cube for a surface.
// Usage: write_report RESULTS.json REPORT.html

#include <array>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "results/Geometry.h"
#include "results/HtmlWriter.h"
#include "results/ResultJson.h"

namespace {

results::Geometry cube() {
    std::array<float, 24> corners{};
    for (std::size_t i = 0; i < 8; ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            corners[3 * i + axis] = (i >> axis & 1U) ? 20.0F : 0.0F;
    const std::array<std::uint32_t, 36> triangles{0, 2, 3, 0, 3, 1, 4, 5, 7, 4, 7, 6,
                                                  0, 1, 5, 0, 5, 4, 2, 6, 7, 2, 7, 3,
                                                  0, 4, 6, 0, 6, 2, 1, 3, 7, 1, 7, 5};
    std::array<std::uint32_t, 12> faces{};
    for (std::uint32_t i = 0; i < 12; ++i)
        faces[i] = i / 2 + 1;
    return results::encodeGeometry(corners, triangles, faces);
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) return 2;
    std::ifstream in(arguments[1]);
    std::string problem;
    std::optional<results::Run> run = results::readResults(in, problem);
    if (!run) {
        std::cerr << problem << '\n';
        return 1;
    }
    std::ofstream out(arguments[2]);
    const std::unique_ptr<results::ResultWriter> writer = results::makeHtmlWriter(out);
    writer->begin(run->info);
    for (results::PartResult& part : run->parts) {
        part.geometry = cube();
        writer->add(part);
    }
    writer->end(run->end);
    return out.flush() ? 0 : 1;
}
