#include "run/Protocol.h"

#include <nlohmann/json.hpp>

#include "results/ResultJson.h"

namespace protocol {

using results::Json;

namespace {

Json fileJson(const Setup::File& file) {
    Json json{{"path", file.path}, {"sha256", file.sha256}, {"included", Json::array()}};
    for (const Setup::File& included : file.included)
        json["included"].push_back(fileJson(included));
    return json;
}

Setup::File fileFrom(const Json& json) {
    Setup::File file{json.at("path"), json.at("sha256"), {}};
    for (const Json& included : json.at("included"))
        file.included.push_back(fileFrom(included));
    return file;
}

}  // namespace

std::string lineOf(const Setup& setup) {
    Json json{{"modules", setup.moduleFolders},
              {"material", setup.material},
              {"units", setup.units},
              {"batch", setup.batch}};
    json["files"] = Json::array();
    for (const Setup::File& file : setup.files)
        json["files"].push_back(fileJson(file));
    json["rules"] = Json::array();
    for (const Setup::Rule& rule : setup.rules)
        json["rules"].push_back({{"file", rule.file}, {"element", rule.element}});
    return results::lineOf(json);
}

Setup setupFrom(const std::string& line) {
    const Json json = Json::parse(line);
    Setup setup;
    json.at("modules").get_to(setup.moduleFolders);
    json.at("material").get_to(setup.material);
    json.at("units").get_to(setup.units);
    json.at("batch").get_to(setup.batch);
    for (const Json& file : json.at("files"))
        setup.files.push_back(fileFrom(file));
    for (const Json& rule : json.at("rules"))
        setup.rules.push_back({rule.at("file"), rule.at("element")});
    return setup;
}

std::string lineOf(const Job& job) {
    return results::lineOf(Json{{"part", job.part},
                                {"path", job.path},
                                {"rules", job.rules},
                                {"surface", job.wantsSurface}});
}

Job jobFrom(const std::string& line) {
    const Json json = Json::parse(line);
    Job job;
    json.at("part").get_to(job.part);
    json.at("path").get_to(job.path);
    json.at("rules").get_to(job.rules);
    json.at("surface").get_to(job.wantsSurface);
    return job;
}

std::string lineOf(const Reply& reply) {
    Json json{{"part", reply.part}};
    if (reply.kind == Reply::Kind::Done)
        json["database"] = reply.database;
    else
        json["rule"] = reply.rule;
    if (reply.surface)
        json["surface"] = {reply.surface->positions, reply.surface->indices, reply.surface->faces};
    if (reply.kind == Reply::Kind::Judged) {
        json["result"] = results::toJson(reply.result);
        json["shown"] = Json::array();
        for (const results::Remark& reason : reply.result.reasons)
            json["shown"].push_back(reason.shown);
    }
    return results::lineOf(json);
}

Reply replyFrom(const std::string& line) {
    const Json json = Json::parse(line);
    Reply reply;
    json.at("part").get_to(reply.part);
    if (!json.contains("rule")) {
        json.at("database").get_to(reply.database);
        if (json.contains("surface")) {
            const Json& surface = json.at("surface");
            reply.surface = results::Geometry{surface.at(0), surface.at(1), surface.at(2)};
        }
        return reply;
    }
    json.at("rule").get_to(reply.rule);
    reply.kind = json.contains("result") ? Reply::Kind::Judged : Reply::Kind::Begins;
    if (reply.kind == Reply::Kind::Judged) {
        reply.result = results::ruleFrom(json.at("result"));
        for (std::size_t i = 0; i < reply.result.reasons.size(); ++i)
            json.at("shown").at(i).get_to(reply.result.reasons[i].shown);
    }
    return reply;
}

}  // namespace protocol
