#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "results/Result.h"

/// What controller and workers write to each other, a line of JSON each.
namespace protocol {

/// The first line to a worker.
struct Setup {
    struct File {
        std::string path, sha256;
        std::vector<File> included;  ///< Files whose rules it takes.
    };
    struct Rule {
        std::size_t file = 0;      ///< Place in `files`.
        std::int64_t element = 0;  ///< Place of the rule's element in that file.
    };
    std::vector<File> files;
    std::vector<Rule> rules;
    std::vector<std::string> moduleFolders;
    std::string material, units;
    bool batch = false;
};

/// Each further line to a worker.
struct Job {
    std::size_t part = 0;
    std::string path;               ///< Absolute; empty for none.
    std::deque<std::size_t> rules;  ///< Places in Setup::rules, to be run in this order.
    bool wantsSurface = false;      ///< After the rules, for viewers.
};

/// A line from a worker. Each rule is announced before it runs, so that the controller knows what
/// a worker was at when it is gone.
struct Reply {
    enum class Kind { Begins, Judged, Done };
    Kind kind = Kind::Done;
    std::size_t part = 0;
    std::size_t rule = 0;                      ///< Of Begins and Judged.
    results::RuleResult result;                ///< Of Judged.
    std::string database;                      ///< Of Done: what was opened so far.
    std::optional<results::Geometry> surface;  ///< Of Done.
};

std::string lineOf(const Setup& setup);
std::string lineOf(const Job& job);
std::string lineOf(const Reply& reply);

// Raise nlohmann::json::exception for anything else.
Setup setupFrom(const std::string& line);
Job jobFrom(const std::string& line);
Reply replyFrom(const std::string& line);

}  // namespace protocol
