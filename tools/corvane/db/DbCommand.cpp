#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <corvane/database/QORDataHelper.h>
#include <corvane/platform/LoadedModule.h>

#include "Commands.h"
#include "db/Actions.h"
#include "db/Lookups.h"
#include "files/ModuleFault.h"

using namespace qor_db;

namespace {

/// The name of the row that holds for every material of a process.
const CStringW kAnyMaterial = u"any";

struct DbOptions {
    FolderOptions folders;
    CStringW name;      ///< Of what is looked up.
    CStringW process;   ///< Of a wall.
    double length = 0;  ///< mm
    bool preferred = false;
    ClearanceFit fit = ClearanceFit::Medium;
    BendDirection direction = BendDirection::Across;
    CStringW statement;
    int limit = 1000;
};

int reportMissing(Console& console) {
    const CStringW path = QORDataHelper::configured().collectorModule;
    const corvane::LoadedModule module(path);
    if (module)
        console.report(tr("{0} gives no collector", module.file()));
    else
        console.report(tr("the collector module: {0}", moduleFault(module, path)));
    return kWrong;
}

class DbCommand : public Command {
public:
    explicit DbCommand(CLI::App& program)
        : Command(
              program, "db", "Show the rule database's connection, or look something up in it",
              "Exit status: 0 found or done, 1 not found or no database, 2 bad usage. Lengths are\n"
              "in millimetres. A database file that is not there is made. --data DIR may follow\n"
              "every command.") {
        options_.folders.declareData(parser(), FolderOptions::Missing::Refused);
        takeCommand(parser(), true);
        addConnection();
        addHoles();
        addMaterials();
        addQuery();
    }

    int run(Console& console) override {
        options_.folders.apply();
        IDatabaseCollector* collector = QORDataHelper::getInstance();
        return collector ? action_(*collector, console) : reportMissing(console);
    }

private:
    using Action = std::function<int(IDatabaseCollector&, Console&)>;

    CLI::App& add(const char* name, Message description, Action action) {
        CLI::App* command = addCommand(parser(), name, description);
        takeParentsOptions(*command);
        onRead(*command, [this, action = std::move(action)] { action_ = action; });
        return *command;
    }

    /// A command that prints what `look` finds, one row or a list of them.
    template <typename Look>
    CLI::App& addLookup(const char* name, Message description, Look look) {
        return add(name, description, [look](IDatabaseCollector& collector, Console& console) {
            if (!collector.connection().open) return reportStatus(collector.status(), console);
            const auto found = look(collector.reference());
            if constexpr (requires { printRows(found, console); })
                return printRows(found, console);
            else
                return printRow(found, console);
        });
    }

    void addLength(CLI::App& command, const char* name, Message description) {
        addNumber(command, name, options_.length, trUtf8(description)).required().typeName("MM");
    }
    void addPreferred(CLI::App& command) {
        addFlag(command, "--preferred", options_.preferred,
                trUtf8("Whole and half millimetres only"));
    }
    void addName(CLI::App& command, const char* name, Message description) {
        addText(command, name, options_.name, description).required();
    }

    void addConnection() { add("install", "Make or upgrade the reference tables", installTables); }

    void addHoles() {
        const DbOptions& options = options_;
        addPreferred(addLookup("drills", "List the drills", [&options](IReferenceData& data) {
            return data.drillSizes(options.preferred);
        }));
        CLI::App& drill =
            addLookup("drill", "The drill closest to a diameter", [&options](IReferenceData& data) {
                return data.nearestDrill(options.length, options.preferred);
            });
        addLength(drill, "DIAMETER", "In millimetres");
        addPreferred(drill);
        addName(addLookup("thread", "A metric thread and its tap drill",
                          [&options](IReferenceData& data) { return data.thread(options.name); }),
                "THREAD", "Such as M6 or M8x1");
        addLength(
            addLookup("threads", "The threads of a diameter",
                      [&options](IReferenceData& data) { return data.threads(options.length); }),
            "DIAMETER", "In millimetres");
        CLI::App& hole =
            addLookup("hole", "The clearance hole of a bolt", [&options](IReferenceData& data) {
                return data.clearanceHole(options.length, options.fit);
            });
        addLength(hole, "DIAMETER", "Of the bolt, in millimetres");
        const std::map<std::string, ClearanceFit> fits{{"fine", ClearanceFit::Fine},
                                                       {"medium", ClearanceFit::Medium},
                                                       {"coarse", ClearanceFit::Coarse}};
        addChoice(hole, "FIT", options_.fit, "fine, medium or coarse", fits);
    }

    void addMaterials() {
        const DbOptions& options = options_;
        addLookup("materials", "List the materials",
                  [](IReferenceData& data) { return data.materials(); });
        addName(addLookup("material", "A material's limits",
                          [&options](IReferenceData& data) { return data.material(options.name); }),
                "MATERIAL", "Such as S235JR");
        CLI::App& bend =
            addLookup("bend", "The least inner radius of a bend", [&options](IReferenceData& data) {
                return data.bendRadius(options.name, options.length, options.direction);
            });
        addName(bend, "MATERIAL", "A material or its bend group");
        addLength(bend, "THICKNESS", "Of the sheet, in millimetres");
        const std::map<std::string, BendDirection> directions{{"across", BendDirection::Across},
                                                              {"along", BendDirection::Along}};
        addChoice(bend, "DIRECTION", options_.direction, "across or along the rolling direction",
                  directions);
        addLookup("walls", "List the least walls of the processes",
                  [](IReferenceData& data) { return data.minimumWalls(); });
        CLI::App& wall =
            addLookup("wall", "The least wall of a process", [&options](IReferenceData& data) {
                return data.minimumWall(options.process,
                                        options.name.IsEmpty() ? kAnyMaterial : options.name);
            });
        addText(wall, "PROCESS", options_.process, "Such as \"injection moulding\"").required();
        addText(wall, "MATERIAL", options_.name, "Such as ABS; else what holds for any material");
    }

    template <typename Choice>
    void addChoice(CLI::App& command, const char* name, Choice& target, Message description,
                   const std::map<std::string, Choice>& choices) {
        const auto take = [&target, choices](const std::string& word) {
            target = choices.at(word);
        };
        std::vector<std::string> words;
        words.reserve(choices.size());
        for (const auto& choice : choices)
            words.push_back(choice.first);
        addWord(command, name, take, trUtf8(description)).oneOf(words, false);
    }

    void addQuery() {
        CLI::App& query =
            add("query", "Run one statement that reads (SELECT, WITH, VALUES, EXPLAIN)",
                [this](IDatabaseCollector& collector, Console& console) {
                    return runQuery(collector, options_.statement, options_.limit, console);
                });
        addText(query, "STATEMENT", options_.statement, "In the language of the database")
            .required();
        addNumber(query, "--limit", options_.limit,
                  trUtf8("Rows to print at most, 1000 unless given"))
            .positive()
            .typeName("ROWS");
    }

    DbOptions options_;
    Action action_ = showConnection;
};

}  // namespace

std::unique_ptr<Command> makeDbCommand(CLI::App& program) {
    return std::make_unique<DbCommand>(program);
}
