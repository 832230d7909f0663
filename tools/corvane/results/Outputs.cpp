#include "results/Outputs.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

#include "Signals.h"
#include "language/Messages.h"
#include "results/TextWriter.h"

namespace results {

bool Outputs::open(const std::string& format, const std::vector<std::string>& outputs,
                   const std::vector<std::string>& inputs) {
    if (format == "text") {
        writers_.push_back(makeTextWriter(console_));
    } else if (const Format* known = findFormat(format)) {
        writers_.push_back(known->makeWriter(std::cout));
        wantGeometry_ = known->wantsGeometry;
    } else {
        console_.report(tr("--format takes one of {0}", formatNames()));
        return false;
    }
    for (const std::string& output : outputs)
        if (!openFile(output, inputs)) return false;
    // Such as `head`: the files are to be whole nevertheless.
    if (!files_.empty()) outliveReader();
    return true;
}

/// Whether neither an input nor another output is that file. Devices and pipes take all.
bool Outputs::isFree(const std::string& path, const std::vector<std::string>& inputs) {
    namespace fs = std::filesystem;
    std::error_code failed;
    const bool exists = fs::exists(path, failed);
    if (exists && !fs::is_regular_file(path, failed)) return true;
    const auto isSame = [&path, &failed](const std::string& other) {
        return fs::equivalent(path, other, failed);
    };
    if (exists && std::ranges::any_of(inputs, isSame)) {
        console_.report(tr("{0}: the results would replace what the run reads", path));
        return false;
    }
    if (!paths_.insert(fs::weakly_canonical(path, failed).string()).second) {
        console_.report(tr("{0}: two outputs go there", path));
        return false;
    }
    return true;
}

bool Outputs::openFile(const std::string& output, const std::vector<std::string>& inputs) {
    const std::size_t equals = output.find('=');
    const Format* format = findFormat(output.substr(0, equals));
    if (!format || equals + 1 >= output.size() || equals == std::string::npos) {
        console_.report(tr("--output takes FORMAT=FILE, with one of {0}", formatNames()));
        return false;
    }
    const std::string path = output.substr(equals + 1);
    if (!isFree(path, inputs)) return false;
    auto file = std::make_unique<OutputFile>(path);
    if (!file->isOpen()) {
        console_.report(tr("{0}: cannot be written", file->path()));
        return false;
    }
    writers_.push_back(format->makeWriter(file->stream()));
    wantGeometry_ = wantGeometry_ || format->wantsGeometry;
    files_.push_back(std::move(file));
    return true;
}

void Outputs::begin(const RunInfo& info) {
    for (const auto& writer : writers_)
        writer->begin(info);
}

void Outputs::add(const PartResult& part) {
    // A line of progress must not end up between the results.
    console_.clearProgress();
    for (const auto& writer : writers_)
        writer->add(part);
}

void Outputs::end(const RunEnd& end) {
    console_.clearProgress();
    for (const auto& writer : writers_)
        writer->end(end);
}

bool Outputs::commit() {
    writers_.clear();
    bool written = true;
    for (const std::unique_ptr<OutputFile>& file : files_) {
        if (file->commit()) continue;
        console_.report(tr("{0}: cannot be written", file->path()));
        written = false;
    }
    files_.clear();
    return written;
}

std::string formatNames() {
    std::string names;
    for (const Format& format : allFormats())
        names += (names.empty() ? "" : ", ") + std::string(format.name);
    return names;
}

}  // namespace results
