// The text of a STEP, IGES or BREP file. The kernel that reads it is not measured, so most changes
// are such as keep its form: another number or another thing in the place of one. It may take many
// seconds over senseless geometry; what takes longer still meets the fuzzer's own limit.

#include "PartModel.h"
#include "Words.h"

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
    return fuzz::mutateWords(data, size, most, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto result = fuzz::readPart("part", fuzz::textOf(data, size));
    if (!result.shape) return 0;
    try {
        result.shape->box({});
    } catch (const std::exception&) {
    }
    return 0;
}
