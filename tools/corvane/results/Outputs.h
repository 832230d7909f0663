#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Console.h"
#include "results/OutputFile.h"
#include "results/ResultWriter.h"

namespace results {

/// Where the results of a run go: standard output in one format, and any number of files.
class Outputs : public ResultWriter {
public:
    explicit Outputs(Console& console) : console_(console) {}

    /// `outputs` holds "FORMAT=FILE". False, with the reason reported, for a format that is none,
    /// a file that cannot be made, one that is named twice and one of `inputs`, the files that are
    /// read.
    bool open(const std::string& format, const std::vector<std::string>& outputs,
              const std::vector<std::string>& inputs);

    /// Whether one of the formats shows parts.
    bool wantGeometry() const { return wantGeometry_; }

    void begin(const RunInfo& info) override;
    void add(const PartResult& part) override;
    void end(const RunEnd& end) override;

    /// Puts the files into their places. False, and reported, when one cannot be written.
    bool commit();

private:
    bool openFile(const std::string& output, const std::vector<std::string>& inputs);
    bool isFree(const std::string& path, const std::vector<std::string>& inputs);

    Console& console_;
    bool wantGeometry_ = false;
    std::set<std::string> paths_;  ///< Of plain files, as they are on the disk.
    std::vector<std::unique_ptr<OutputFile>> files_;
    std::vector<std::unique_ptr<ResultWriter>> writers_;  ///< Before the files that they write to.
};

/// "text, json, ..." for messages and help.
std::string formatNames();

}  // namespace results
