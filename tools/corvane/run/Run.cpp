#include "run/Run.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <thread>

#include <corvane/base/Version.h>
#include <corvane/platform/ComponentRegistration.h>
#include <corvane/platform/Environment.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/scriptrules/IScriptProcessor.h>

#include "Signals.h"
#include "Text.h"
#include "language/Messages.h"
#include "results/TextWriter.h"
#include "run/Clock.h"
#include "run/Hash.h"
#include "run/RuleDatabase.h"

namespace {

using results::PartResult;
using results::RuleResult;
using results::Verdict;

protocol::Setup setupOf(const Plan& plan, const RunOptions& options) {
    protocol::Setup setup;
    FileHashes hashes;
    for (std::size_t i = 0; i < plan.ruleFiles.size(); ++i) {
        setup.files.push_back({plan.ruleFiles[i].name, plan.ruleFiles[i].sha256, {}});
        for (const CStringW& included : plan.files[i]->included())
            setup.files.back().included.push_back(
                {included.ToUtf8(), hashes.of(included.Std()), {}});
    }
    for (const PlannedRule& rule : plan.rules)
        setup.rules.push_back({rule.file, rule.element});
    for (const CStringW& folder : options.folders.modules)
        setup.moduleFolders.push_back(folder.ToUtf8());
    setup.material = options.material.ToUtf8();
    setup.units = options.units.ToUtf8();
    setup.batch = options.batch;
    return setup;
}

Pool::Limits limitsOf(const Plan& plan, const RunOptions& options) {
    const unsigned cores = std::max(std::thread::hardware_concurrency(), 1U);
    constexpr std::uint64_t kMostMegabytes = std::numeric_limits<std::uint64_t>::max() >> 20;
    Pool::Limits limits;
    limits.workers = static_cast<unsigned>(std::clamp<std::size_t>(
        plan.parts.size(), 1, options.workers > 0 ? options.workers : cores));
    limits.timeout = std::chrono::duration<double>(options.timeout);
    limits.memory = options.memory > 0 ? std::min(options.memory, kMostMegabytes) << 20
                                       : memoryShare(limits.workers);
    return limits;
}

/// What belongs to the rule's place in this run, whatever judged it and when.
void complete(RuleResult& result, const RuleResult& blank) {
    if (result.name.empty()) {
        result.name = blank.name;
        result.category = blank.category;
        result.description = blank.description;
    }
    result.ruleFile = blank.ruleFile;
    result.line = blank.line;
    result.severity = blank.severity;
    result.components = blank.components;
    // It may name the place of the element, which moves when lines before it do.
    if (!blank.source.empty()) result.source = blank.source;
    result.why = blank.why;
    result.how = blank.how;
}

std::string durationText(double seconds) {
    const auto whole = std::lround(seconds);
    if (whole < 90) return std::to_string(whole) + " s";
    return std::to_string(whole / 60) + " min";
}

}  // namespace

Run::Run(const Plan& plan, const RunOptions& options, Judgement judgement, Gate& gate,
         results::Outputs& outputs, Console& console)
    : plan_(plan),
      options_(options),
      judgement_(std::move(judgement)),
      gate_(gate),
      outputs_(outputs),
      console_(console),
      parts_(plan.parts.size()) {}

void Run::execute(const Severities& severities) {
    prepareCache();
    outputs_.begin(info(severities));
    catchInterruption();
    Pool pool(setupOf(plan_, options_), limitsOf(plan_, options_), *this);
    pool.run();
    end_.database = pool.database();
    if (wasInterrupted()) emitInterrupted();
    finish();
}

results::RunInfo Run::info(const Severities& severities) const {
    results::RunInfo info;
    info.tool = "corvane";
    info.toolVersion = corvane::kVersion;
    info.started = timeNow();
    info.parts = plan_.allParts;
    info.shard = plan_.shard;
    info.shards = plan_.shards;
    info.ruleFiles = plan_.ruleFiles;
    info.severities = severities.all();
    return info;
}

std::optional<protocol::Job> Run::next() {
    while (nextPart_ < plan_.parts.size() && !wasInterrupted()) {
        const std::size_t number = nextPart_++;
        startPart(number);
        PartState& part = *parts_[number];
        protocol::Job job{number, plan_.parts[number].fullPath, {}, false};
        job.wantsSurface = outputs_.wantGeometry() && !job.path.empty();
        for (std::size_t rule = 0; rule < plan_.rules.size(); ++rule)
            if (!part.isKnown[rule]) job.rules.push_back(rule);
        if (!job.rules.empty() || job.wantsSurface) return job;
        done(number, {});
    }
    return {};
}

void Run::startPart(std::size_t number) {
    const PlannedPart& planned = plan_.parts[number];
    auto part = std::make_unique<PartState>();
    PartResult& result = part->result;
    result.number = planned.number;
    result.rules.resize(plan_.rules.size());
    part->isKnown.resize(plan_.rules.size());
    if (!planned.path.empty()) {
        result.path = wide(planned.path).ToUtf8();  // valid UTF-8 in every format
        result.units = options_.units.IsEmpty() ? "mm" : options_.units.ToUtf8();
        if (const std::optional<FileHash> hash = hashFile(planned.fullPath)) {
            result.sha256 = hash->sha256;
            result.size = hash->size;
        }
    }
    part->identity = result.sha256 + ' ' + std::filesystem::path(planned.path).filename().string() +
                     '\n' + commonIdentity_;
    takeFromCache(*part);
    parts_[number] = std::move(part);
}

/// What all rules of the run depend on: this library with its script host, the database and the
/// settings of the run.
void Run::prepareCache() {
    if (options_.cacheFolder.empty()) return;
    const DatabaseState database = databaseState();
    if (database.isServer) {
        notices_.push_back(
            remark("nothing is taken from --cache: whether the tables of a database server have "
                   "changed cannot be told"));
        return;
    }
    cache_.emplace(options_.cacheFolder);
    const CStringW library = corvane::LoadedModule(u"CorvaneFrameworku.dll").file();
    const CStringW host(corvane::FindComponent(IScriptProcessor::kProgramId).module);
    commonIdentity_ = std::string(corvane::kVersion) + '\n' + database.identity + '\n' +
                      options_.material.ToUtf8() + '\n' + options_.units.ToUtf8() + '\n';
    const std::filesystem::path folder = std::filesystem::path(library.Std()).parent_path();
    std::filesystem::path hostFile = folder / std::u16string(lastName(shownPath(host)));
    for (const auto& file :
         {std::filesystem::path(library.Std()), std::filesystem::path(shownPath(host).Std()),
          hostFile.replace_extension(".so")}) {
        const std::optional<FileHash> hash = hashFile(file);
        commonIdentity_ += hash ? hash->sha256 + '\n' : "none\n";
    }
    for (const char16_t* limit : {u"CORVANE_SCRIPT_MAX_INSTRUCTIONS", u"CORVANE_SCRIPT_MAX_SECONDS",
                                  u"CORVANE_SCRIPT_MAX_MEMORY_MB"})
        commonIdentity_ += CStringW(corvane::GetEnvironmentText(limit)).ToUtf8() + '\n';
}

std::string Run::cacheKey(const PartState& part, std::size_t rule) const {
    return part.identity + plan_.rules[rule].identity;
}

void Run::takeFromCache(PartState& part) {
    // Without its bytes nobody can tell whether a part is the same.
    if (!cache_ || (part.result.sha256.empty() && !part.result.path.empty())) return;
    for (std::size_t rule = 0; rule < plan_.rules.size(); ++rule) {
        std::optional<RuleResult> result = cache_->find(cacheKey(part, rule));
        if (result) put(part, rule, std::move(*result));
    }
}

void Run::put(PartState& part, std::size_t rule, RuleResult result) {
    complete(result, plan_.rules[rule].blank);
    part.result.rules[rule] = std::move(result);
    part.isKnown[rule] = true;
}

void Run::begins(std::size_t part, std::size_t rule) {
    const bool isFirst = !step_;
    step_ = Step{part, rule};
    // A run that is over before the next tick shows what it did, too.
    if (isFirst) tick();
}

void Run::judged(std::size_t number, std::size_t rule, RuleResult result) {
    PartState& part = *parts_[number];
    put(part, rule, std::move(result));
    const RuleResult& known = part.result.rules[rule];
    if (!cache_ || !Cache::isWorthKeeping(known) ||
        (part.result.sha256.empty() && !part.result.path.empty()))
        return;
    if (cache_->keep(cacheKey(part, rule), known)) return;
    console_.report(tr("{0}: results cannot be kept there", options_.cacheFolder));
    cache_.reset();
}

void Run::lost(std::size_t part, std::size_t rule, const results::Remark& reason) {
    RuleResult result = plan_.rules[rule].blank;
    result.verdict = Verdict::Error;
    result.reasons.push_back(reason);
    put(*parts_[part], rule, std::move(result));
}

void Run::done(std::size_t part, std::optional<results::Geometry> surface) {
    parts_[part]->result.geometry = std::move(surface);
    parts_[part]->isDone = true;
    emitFinished();
}

/// Results come out in the order of the plan, whichever worker is faster.
void Run::emitFinished() {
    while (emitted_ < parts_.size() && parts_[emitted_] && parts_[emitted_]->isDone) {
        emit(*parts_[emitted_]);
        parts_[emitted_++].reset();
    }
}

void Run::emit(PartState& part) {
    if (judgement_.waivers) judgement_.waivers->apply(part.result);
    if (judgement_.baseline) judgement_.baseline->apply(part.result);
    gate_.add(part.result);
    end_.counts.add(part.result);
    outputs_.add(part.result);
}

/// Whatever was judged is told; of a part that was begun, the other rules are not run.
void Run::emitInterrupted() {
    end_.interrupted = true;
    gate_.addInterruption();
    for (; emitted_ < parts_.size(); ++emitted_) {
        if (!parts_[emitted_]) continue;
        PartState& part = *parts_[emitted_];
        if (std::ranges::find(part.isKnown, true) == part.isKnown.end()) continue;
        for (std::size_t rule = 0; rule < plan_.rules.size(); ++rule) {
            if (part.isKnown[rule]) continue;
            RuleResult result = plan_.rules[rule].blank;
            result.reasons.push_back(remark("the run was interrupted"));
            put(part, rule, std::move(result));
        }
        emit(part);
        parts_[emitted_].reset();
    }
}

void Run::finish() {
    if (judgement_.waivers) {
        const bool isPartial = end_.interrupted || plan_.shards > 1;
        for (const results::Remark& notice : judgement_.waivers->notices(isPartial))
            notices_.push_back(notice);
    }
    end_.notices = notices_;
    end_.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    outputs_.end(end_);
    for (const results::Remark& notice : notices_)
        console_.report(wide(notice.shown));
}

/// Of the one part; the rule that runs counts.
std::size_t Run::rulesBegun() const {
    if (parts_.empty() || !parts_[0]) return plan_.rules.size();
    const auto known = std::ranges::count(parts_[0]->isKnown, true);
    return std::min(static_cast<std::size_t>(known) + 1, plan_.rules.size());
}

CStringW Run::stepText() const {
    const CStringW rule = wide(plan_.rules[step_->rule].blank.name);
    const std::string& path = plan_.parts[step_->part].path;
    return path.empty() ? rule : CStringW(lastName(wide(path))) + u", " + rule;
}

void Run::tick() {
    if (!step_) return;
    CStringW text = parts_.size() > 1 ? tr("{0} of {1} parts", emitted_, parts_.size())
                                      : tr("{0} of {1}", rulesBegun(), plan_.rules.size());
    if (end_.counts.failed > 0)
        text += tr(", ") + trCount({"{0} failed", "{0} failed"}, end_.counts.failed);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start_;
    if (emitted_ > 0 && taken.count() > 5)
        text +=
            tr(", ") + tr("{0} left", durationText(taken.count() / static_cast<double>(emitted_) *
                                                   static_cast<double>(parts_.size() - emitted_)));
    console_.progress(text + u": " + stepText());
}
