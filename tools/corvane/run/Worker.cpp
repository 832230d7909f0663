#include "run/Worker.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include <corvane/app/BatchMode.h>
#include <corvane/platform/Environment.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/platform/SteadyFilesScope.h>
#include <corvane/scriptrules/RuleIndexScope.h>

#include "Command.h"
#include "Console.h"
#include "Text.h"
#include "files/LoadedRule.h"
#include "language/Messages.h"
#include "run/Hash.h"
#include "run/Judge.h"
#include "run/Protocol.h"
#include "run/RuleDatabase.h"
#include "run/WorkerProcess.h"
#include "surface/PartSurface.h"

namespace {

using protocol::Reply;

std::vector<CStringW> wide(const std::vector<std::string>& texts) {
    std::vector<CStringW> result;
    result.reserve(texts.size());
    for (const std::string& text : texts)
        result.push_back(CStringW::FromUtf8(text));
    return result;
}

bool isUnchanged(const protocol::Setup::File& file) {
    const std::optional<FileHash> hash = hashFile(file.path);
    return hash && hash->sha256 == file.sha256;
}

class Worker {
public:
    Worker(WorkerChannel& channel, protocol::Setup setup)
        : channel_(channel),
          setup_(std::move(setup)),
          console_(true),
          modules_(wide(setup_.moduleFolders)),
          files_(setup_.files.size()) {}

    void run(const protocol::Job& job) {
        const corvane::SteadyFilesScope steady;
        context_.partPath = CStringW::FromUtf8(job.path);
        context_.partName = lastName(context_.partPath);
        context_.partMaterial = CStringW::FromUtf8(setup_.material);
        context_.partUnits = CStringW::FromUtf8(setup_.units);
        // For engines that know no context.
        if (!job.path.empty()) corvane::SetEnvironmentText(u"CORVANE_PART", context_.partPath);
        for (const std::size_t rule : job.rules)
            runRule(job.part, rule);
        Reply reply{Reply::Kind::Done, job.part, 0, {}, database_.description(), {}};
        if (job.wantsSurface) reply.surface = surfaceOf(job.path);
        tell(reply);
    }

private:
    /// What a rule has come to goes out with the line after it, which follows at once.
    void tell(const Reply& reply) {
        untold_ += lineOf(reply);
        if (reply.kind == Reply::Kind::Judged) {
            untold_ += '\n';
            return;
        }
        channel_.write(untold_);
        untold_.clear();
    }

    void runRule(std::size_t part, std::size_t number) {
        // Before the rule is made: its module may end the process as well as the rule itself.
        tell(Reply{Reply::Kind::Begins, part, number, {}, {}, {}});
        Reply reply{Reply::Kind::Judged, part, number, {}, {}, {}};
        if (const LoadedRule* loaded = ruleOf(number)) {
            context_.database = database_.forRule(*loaded);
            context_.parameters = loaded->scriptParameters(context_.partMaterial);
            reply.result = judge(*loaded, context_);
        } else {
            reply.result.verdict = results::Verdict::Error;
            reply.result.reasons.push_back(remark("the rule file has changed since the run began"));
        }
        tell(reply);
    }

    /// Nothing without the module that reads surfaces, which not every installation has.
    std::optional<results::Geometry> surfaceOf(const std::string& path) {
        if (!surfaceModule_) surfaceModule_.emplace(kPartSurfaceModule);
        const auto read = surfaceModule_->function<PartSurfaceFunction>(kPartSurfaceName);
        results::Geometry surface;
        if (!read || !read(path.c_str(), setup_.units.c_str(), surface)) return {};
        return surface;
    }

    const LoadedRule* ruleOf(std::size_t number) {
        const auto known = rules_.find(number);
        if (known != rules_.end()) return &known->second;
        const protocol::Setup::Rule& rule = setup_.rules.at(number);
        const RuleFile* file = fileOf(rule.file);
        if (!file || rule.element >= file->size()) return nullptr;
        std::vector<CStringW> messages;
        LoadedRule loaded;
        {
            const MessageScope scope(
                [&messages](const CStringW& text) { messages.push_back(text); });
            loaded = loadRule(*file, static_cast<QorLong>(rule.element), modules_);
        }
        for (const CStringW& message : messages)
            loaded.problems.emplace_back(message.ToUtf8());
        return &rules_.emplace(number, std::move(loaded)).first->second;
    }

    const RuleFile* fileOf(std::size_t number) {
        std::unique_ptr<RuleFile>& file = files_.at(number);
        const protocol::Setup::File& named = setup_.files[number];
        if (file) return file.get();
        if (!isUnchanged(named) || !std::ranges::all_of(named.included, isUnchanged))
            return nullptr;
        file = RuleFile::load(CStringW::FromUtf8(named.path), console_);
        return file.get();
    }

    WorkerChannel& channel_;
    std::string untold_;  ///< Lines.
    protocol::Setup setup_;
    corvane::RuleIndexScope index_;
    Console console_;
    RuleModules modules_;
    RuleDatabase database_;
    std::optional<corvane::LoadedModule> surfaceModule_;
    corvane::RunContext context_;
    std::vector<std::unique_ptr<RuleFile>> files_;
    std::map<std::size_t, LoadedRule> rules_;  ///< Before the modules, whose code they need.
};

}  // namespace

int runWorker() {
    WorkerChannel channel;
    std::string line;
    if (!channel.read(line)) return kGood;
    protocol::Setup setup = protocol::setupFrom(line);
    SetBatchModeStatus(setup.batch);
    Worker worker(channel, std::move(setup));
    while (channel.read(line))
        worker.run(protocol::jobFrom(line));
    return kGood;
}
