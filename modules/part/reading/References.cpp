#include "References.h"

#include <algorithm>
#include <charconv>
#include <unordered_map>

namespace corvane::part::reading {
namespace {

/// Shapes in an assembly of 64 levels need some hundred.
constexpr int kDeepest = 2000;
/// The kernel needs 600 bytes for each, and minutes for all.
constexpr std::size_t kMostEntities = 5'000'000;

/// Goes depth first, in a loop: how long a chain is, is up to the file.
class Walk {
public:
    Walk(const References& references, double most)
        : references_(references),
          most_(most),
          depths_(references.size(), kNew),
          counts_(references.size(), 0.0) {}

    ReferenceFault fault() {
        for (std::size_t thing = 0; thing < references_.size(); ++thing) {
            if (depths_[thing] != kNew) continue;
            const ReferenceFault found = from(thing);
            if (found.kind != ReferenceFault::Kind::None) return found;
        }
        return {};
    }

private:
    static constexpr int kNew = -1, kOpen = 0;
    struct Step {
        std::size_t thing, next;
    };

    ReferenceFault from(std::size_t start) {
        enter(start);
        while (!path_.empty()) {
            Step& step = path_.back();
            const auto& parts = references_[step.thing];
            if (step.next == parts.size()) {
                const std::size_t thing = step.thing;
                leave();
                if (depths_[thing] > kDeepest) return {ReferenceFault::Kind::TooDeep, thing};
                if (counts_[thing] > most_) return {ReferenceFault::Kind::TooMany, thing};
                continue;
            }
            const std::size_t part = parts[step.next++];
            if (depths_[part] == kOpen) return {ReferenceFault::Kind::Cycle, part};
            if (depths_[part] == kNew) enter(part);
        }
        return {};
    }

    void enter(std::size_t thing) {
        depths_[thing] = kOpen;
        path_.push_back({thing, 0});
    }

    void leave() {
        const std::size_t thing = path_.back().thing;
        path_.pop_back();
        int depth = 0;
        double count = 1.0;
        for (const std::uint32_t part : references_[thing]) {
            depth = std::max(depth, depths_[part]);
            count += counts_[part];
        }
        depths_[thing] = depth + 1;
        counts_[thing] = count;
    }

    const References& references_;
    double most_;
    std::vector<int> depths_;  // how many stand in a row below it; or not yet known
    std::vector<double> counts_;
    std::vector<Step> path_;
};

/// The instances of a STEP text with their references.
class Instances {
public:
    explicit Instances(std::string_view text) : rest_(text) {
        while (!rest_.empty() && !areTooMany())
            takeStatement();
    }

    [[nodiscard]] bool areTooMany() const { return references_.size() > kMostEntities; }

    [[nodiscard]] const References& references() const { return references_; }
    [[nodiscard]] std::uint64_t name(std::size_t thing) const { return names_[thing]; }

private:
    void takeStatement() {
        bool first = true;
        std::size_t owner = kNone;
        while (!rest_.empty()) {
            const char c = rest_.front();
            if (c == '#') {
                const std::size_t thing = takeName();
                if (thing == kNone) continue;
                if (first) owner = thing;
                if (!first && owner != kNone)
                    references_[owner].push_back(static_cast<std::uint32_t>(thing));
                first = false;
                continue;
            }
            skip(c);
            if (c == ';') return;
            if (c != ' ' && c != '\n' && c != '\r' && c != '\t') first = false;
        }
    }

    /// One character, or a text or comment as a whole.
    void skip(char c) {
        std::size_t end = 1;
        if (c == '\'' || c == '"') end = after(rest_.find(c, 1), 1);
        if (rest_.starts_with("/*")) end = after(rest_.find("*/", 2), 2);
        rest_.remove_prefix(end);
    }

    [[nodiscard]] std::size_t after(std::size_t found, std::size_t size) const {
        return found == rest_.npos ? rest_.size() : found + size;
    }

    std::size_t takeName() {
        std::uint64_t name = 0;
        const char* const end = rest_.data() + rest_.size();
        const auto [stop, error] = std::from_chars(rest_.data() + 1, end, name);
        rest_.remove_prefix(
            std::max<std::size_t>(1, static_cast<std::size_t>(stop - rest_.data())));
        if (error != std::errc()) return kNone;
        const auto [it, fresh] = numbers_.emplace(name, references_.size());
        if (fresh) {
            references_.emplace_back();
            names_.push_back(name);
        }
        return it->second;
    }

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::string_view rest_;
    References references_;
    std::vector<std::uint64_t> names_;
    std::unordered_map<std::uint64_t, std::size_t> numbers_;
};

}  // namespace

ReferenceFault checkReferences(const References& references, double most) {
    return Walk(references, most).fault();
}

std::string stepFault(std::string_view text) {
    const Instances instances(text);
    if (instances.areTooMany()) return "it has more than 5,000,000 entities";
    const ReferenceFault fault = checkReferences(instances.references());
    if (fault.kind == ReferenceFault::Kind::None) return {};
    return "entity #" + std::to_string(instances.name(fault.thing)) +
           (fault.kind == ReferenceFault::Kind::Cycle ? " refers to itself"
                                                      : " has too many parts within parts");
}

}  // namespace corvane::part::reading
