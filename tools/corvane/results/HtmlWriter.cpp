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
    "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
    "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; script-src "
    "'unsafe-inline'; style-src 'unsafe-inline'; img-src data: blob:\">\n"
    "<title>Part check</title>\n";

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
    explicit HtmlWriter(std::ostream& out) : out_(out) {}

    void begin(const RunInfo& info) override {
        out_ << kHead << "<style>\n";
        write(report::kStyle);
        out_ << "</style>\n</head>\n";
        write(report::kPage);
        writeData("id=\"run-data\"", toJson(info));
    }

    void add(const PartResult& part) override {
        writeData("class=\"part\"", toJson(part));
        if (!part.geometry) return;
        const Json geometry = {{"positions", part.geometry->positions},
                               {"indices", part.geometry->indices},
                               {"faces", part.geometry->faces}};
        writeData("class=\"geometry\" data-part=\"" + std::to_string(part.number) + '"', geometry);
    }

    void end(const RunEnd& end) override {
        writeData("id=\"end-data\"", toJson(end));
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
};

}  // namespace

std::unique_ptr<ResultWriter> makeHtmlWriter(std::ostream& out) {
    return std::make_unique<HtmlWriter>(out);
}

}  // namespace results
