#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <span>
#include <string_view>

#include "Result.h"

namespace results {

/// Writes results in one format, part by part as they come. A part that was handed over is not kept
/// by anyone else, so that a run of thousands of parts needs little memory.
class ResultWriter {
public:
    ResultWriter() = default;
    ResultWriter(const ResultWriter&) = delete;
    ResultWriter& operator=(const ResultWriter&) = delete;
    virtual ~ResultWriter() = default;

    virtual void begin(const RunInfo& info) = 0;
    /// In the order of the run.
    virtual void add(const PartResult& part) = 0;
    virtual void end(const RunEnd& end) = 0;
};

/// A format by the name that users give.
struct Format {
    std::string_view name;
    /// The stream must outlive the writer.
    std::unique_ptr<ResultWriter> (*makeWriter)(std::ostream& out);
    bool wantsGeometry = false;  ///< Parts come with their surface.
};

std::span<const Format> allFormats();
const Format* findFormat(std::string_view name);

}  // namespace results
