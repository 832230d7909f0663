#include "HtmlWriter.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

#include "ReportAssets.h"
#include "ResultJson.h"

namespace results {

namespace {

// No script but the page's own, and nothing from anywhere else.
constexpr std::string_view kHead =
    "<!DOCTYPE html>\n<html lang=\"{{en}}\">\n<head>\n<meta charset=\"utf-8\">\n"
    "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; script-src "
    "'unsafe-inline'; style-src 'unsafe-inline'; img-src data: blob:\">\n"
    "<title>{{Part check}}</title>\n";

/// JSON that no text in it can end: a script element ends at "</script", wherever that is.
std::string dataOf(const Json& json) {
    const std::string line = lineOf(json);
    std::string safe;
    safe.reserve(line.size());
    for (const char letter : line) {
        if (letter == '<')
            safe += "\\u003c";
        else
            safe += letter;
    }
    return safe;
}

class HtmlWriter : public ResultWriter {
public:
    HtmlWriter(std::ostream& out, ReportTexts texts) : out_(out), texts_(std::move(texts)) {}

    void begin(const RunInfo& info) override {
        writeTranslated(kHead);
        out_ << "<style>\n";
        write(report::kStyle);
        out_ << "</style>\n</head>\n";
        for (const std::string_view piece : report::kPage)
            writeTranslated(piece);
        writeData("id=\"texts\"", texts_);
        writeData("id=\"run-data\"", toJson(info));
    }

    void add(const PartResult& part) override {
        Json json = toJson(part);
        for (std::size_t i = 0; i < part.rules.size(); ++i)
            show(part.rules[i].reasons, json["rules"][i], "reasons");
        writeData("class=\"part\"", json);
        if (!part.geometry) return;
        const Json geometry = {{"positions", part.geometry->positions},
                               {"indices", part.geometry->indices},
                               {"faces", part.geometry->faces}};
        writeData("class=\"geometry\" data-part=\"" + std::to_string(part.number) + '"', geometry);
    }

    void end(const RunEnd& end) override {
        Json json = toJson(end);
        show(end.notices, json, "notices");
        writeData("id=\"end-data\"", json);
        if (!report::kThree.empty()) {
            out_ << "<!--\n";
            write(report::kThreeLicence);
            out_ << "-->\n";
            writeScript(report::kThree);
        }
        writeScript(report::kScript);
        out_ << "</body>\n</html>\n";
    }

private:
    /// Unlike a file of results, the report is for people.
    static void show(const std::vector<Remark>& remarks, Json& object, const char* member) {
        for (std::size_t i = 0; i < remarks.size(); ++i)
            object[member][i] = remarks[i].shown;
    }

    /// Text in double braces is one of the report's own.
    void writeTranslated(std::string_view text) {
        for (std::size_t mark; (mark = text.find("{{")) != text.npos;) {
            const std::size_t end = text.find("}}", mark);
            const std::string own(text.substr(mark + 2, end - mark - 2));
            const auto found = texts_.find(own);
            out_ << text.substr(0, mark) << (found == texts_.end() ? own : found->second);
            text.remove_prefix(end + 2);
        }
        out_ << text;
    }

    void write(report::Asset asset) {
        for (const std::string_view piece : asset)
            out_ << piece;
    }

    void writeScript(report::Asset asset) {
        out_ << "<script>\n";
        write(asset);
        out_ << "</script>\n";
    }

    void writeData(const std::string& attributes, const Json& json) {
        out_ << "<script type=\"application/json\" " << attributes << '>' << dataOf(json)
             << "</script>\n";
    }

    std::ostream& out_;
    ReportTexts texts_;
};

}  // namespace

std::unique_ptr<ResultWriter> makeHtmlWriter(std::ostream& out, ReportTexts texts) {
    return std::make_unique<HtmlWriter>(out, std::move(texts));
}

}  // namespace results
