// A program of features, as SolidProgram.h has it. The solid that it makes is analysed in every
// way, twice.

#include <BRepTools.hxx>

#include "Findings.h"
#include "SolidProgram.h"
#include "Words.h"

namespace {

/// What the analyses of a file tell; empty if there is no part or none that can be measured.
std::string analysed(const std::string& file) {
    const auto opened = corvane::part::Part::open(file);
    if (!opened.part) return {};
    fuzz::Findings findings(*opened.part);
    try {
        return findings.tell();
    } catch (const std::exception&) {
        return {};
    }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
    return fuzz::mutateWords(data, size, most, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Folder folder;
    // A name of its own for each, since the library keeps parts by their names.
    static unsigned count = 0;
    const TopoDS_Shape solid = fuzz::solidOf(fuzz::textOf(data, size));
    if (solid.IsNull()) return 0;
    std::string told[2];
    for (std::string& text : told) {
        const std::string file = folder.path(std::to_string(++count) + ".brep");
        BRepTools::Write(solid, file.c_str());
        {
            const fuzz::Quick quick;
            text = analysed(file);
        }
        std::filesystem::remove(file);
    }
    fuzz::require(told[0] == told[1], "a part is found the same again");
    return 0;
}
