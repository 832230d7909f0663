#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What a program without this library would hold of one rule: plain fields in UTF-8, filled by
/// code that knows the rules of this benchmark and no others.
struct PeerRule {
    struct Parameter {
        int number = 0;
        std::string name;
        bool status = false;
        int op = 0;
        int type = 0;
        std::string remarks;
    };

    std::string name, description, source, module, file, category;
    int severity = -1, status = 0, lifeStatus = 0;
    std::vector<Parameter> parameters;
    std::vector<int> counts;
    std::vector<double> thicknesses;
    std::vector<bool> flags;
    std::vector<std::string> materials;
    std::vector<std::uint32_t> colours;
    std::vector<std::vector<std::string>> records;

    /// One value of the parameter that comes last.
    void addValue(std::string_view text);
};

using PeerRules = std::vector<PeerRule>;

int toInt(std::string_view text);
std::string fileBytes(const std::string& path);

// Each reads a whole rule file.
PeerRules readBySax(const std::string& path);
PeerRules readByExpat(const std::string& path);
PeerRules readByPugixml(const std::string& path);
/// Only the parser's own work: each event is dropped.
void parseEvents(const std::string& path);

/// Makes the document of the rules and saves it.
void writeByPugixml(const PeerRules& rules, const std::string& path);
