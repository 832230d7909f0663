#include "run/Merge.h"

#include <algorithm>
#include <map>

#include "language/Messages.h"

namespace {

using results::PartResult;
using results::RunInfo;

bool isSameRun(const RunInfo& one, const RunInfo& other) {
    return one.shards == other.shards && one.parts == other.parts &&
           one.ruleFiles == other.ruleFiles && one.toolVersion == other.toolVersion;
}

class Merger {
public:
    explicit Merger(std::vector<NamedRun> runs) : runs_(std::move(runs)) {}

    MergedRun merge() {
        RunInfo& info = merged_.run.info;
        info = runs_.front().run.info;
        const bool areShares = std::ranges::all_of(
            runs_, [](const NamedRun& named) { return named.run.info.shards > 0; });
        if (areShares)
            joinShares();
        else
            appendAll();
        info.shard = info.shards = 0;
        for (const NamedRun& named : runs_)
            addEnd(named);
        for (const PartResult& part : merged_.run.parts)
            merged_.run.end.counts.add(part);
        return std::move(merged_);
    }

private:
    void tell(std::string problem) { merged_.problems.push_back(std::move(problem)); }

    void joinShares() {
        const RunInfo& info = merged_.run.info;
        std::map<std::int64_t, std::string> shares;
        std::map<std::int64_t, PartResult*> parts;
        for (NamedRun& named : runs_) {
            if (!isSameRun(named.run.info, info)) {
                tell(trUtf8("{0}: this is a share of another run than {1}", named.path,
                            runs_.front().path));
                continue;
            }
            const auto [first, isNew] = shares.try_emplace(named.run.info.shard, named.path);
            if (!isNew)
                tell(trUtf8("{0}: this share is double: it is in {1} too", named.path,
                            first->second));
            for (PartResult& part : named.run.parts)
                parts.try_emplace(part.number, &part);
        }
        for (std::int64_t share = 1; share <= info.shards; ++share) {
            if (!shares.contains(share))
                tell(trUtf8("share {0} of {1} is missing", share, info.shards));
        }
        tellMissingParts(shares, parts);
        for (auto& [number, part] : parts)
            merged_.run.parts.push_back(std::move(*part));
    }

    /// Parts of shares that are there and yet not whole.
    void tellMissingParts(const std::map<std::int64_t, std::string>& shares,
                          const std::map<std::int64_t, PartResult*>& parts) {
        const RunInfo& info = merged_.run.info;
        for (const auto& [share, path] : shares) {
            std::int64_t missing = 0;
            for (std::int64_t number = share; number <= info.parts; number += info.shards)
                missing += parts.contains(number) ? 0 : 1;
            if (missing > 0)
                tell(trCount(
                         {"{1}: {0} of its parts is missing", "{1}: {0} of its parts are missing"},
                         missing, path)
                         .ToUtf8());
        }
    }

    void appendAll() {
        RunInfo& info = merged_.run.info;
        info.parts = 0;
        std::map<std::string, std::string> seen;
        for (NamedRun& named : runs_) {
            for (const results::Component& file : named.run.info.ruleFiles)
                if (std::ranges::find(info.ruleFiles, file) == info.ruleFiles.end())
                    info.ruleFiles.push_back(file);
            for (PartResult& part : named.run.parts) {
                const auto [first, isNew] = seen.try_emplace(part.path, named.path);
                if (!isNew && !part.path.empty()) {
                    tell(trUtf8("{0}: the part {1} is double: it is in {2} too", named.path,
                                part.path, first->second));
                    continue;
                }
                part.number = ++info.parts;
                merged_.run.parts.push_back(std::move(part));
            }
        }
    }

    void addEnd(const NamedRun& named) {
        results::RunEnd& end = merged_.run.end;
        const results::RunEnd& other = named.run.end;
        end.interrupted = end.interrupted || other.interrupted;
        end.seconds += other.seconds;
        if (end.database.empty()) end.database = other.database;
        for (const results::Remark& notice : other.notices)
            if (std::ranges::find(end.notices, notice) == end.notices.end())
                end.notices.push_back(notice);
    }

    std::vector<NamedRun> runs_;
    MergedRun merged_;
};

}  // namespace

MergedRun merge(std::vector<NamedRun> runs) {
    return Merger(std::move(runs)).merge();
}
