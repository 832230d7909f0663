#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::part::reading {

/// One instance of a STEP text, such as `#12=SHAPE_ASPECT('hole','',#3,.T.)`. The views are into
/// the text.
struct StepRecord {
    std::uint64_t number = 0;                ///< 12
    std::vector<std::string_view> keywords;  ///< one, or those of a complex instance
    std::vector<std::string_view> texts;     ///< without their quotes, in order, not decoded
    std::vector<std::uint64_t> references;   ///< in order

    [[nodiscard]] bool is(std::string_view keyword) const;
};

/// Calls `visit` with each instance. What is no instance, such as the header, is passed over.
void eachStepRecord(std::string_view text, const std::function<void(const StepRecord&)>& visit);

/// A text of a STEP file (ISO 10303-21:2016, 6.4.3) as UTF-8 on one line; what stands for no
/// character is left out. No more than `most` bytes.
std::string decodeStepText(std::string_view text, std::size_t most);

}  // namespace corvane::part::reading
