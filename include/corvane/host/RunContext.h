#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/text/CStringW.h>

class QORResultSet;

namespace qor_db {
class IDatabaseCollector;
}

namespace corvane {

/// One value of a script's parameter.
using ScriptValue = std::variant<bool, std::int64_t, double, CStringW>;

/// A parameter in force for a rule, under the name by which its script asks for it.
struct ScriptParameter {
    QorLong number = 0;               ///< The parameter's number in the rule's element.
    CStringW name;                    ///< Unique among the parameters of a rule.
    bool isList = false;              ///< A list of any length, or exactly one value.
    std::vector<ScriptValue> values;  ///< All of one kind.
};

/// What a host tells engines, the script host and rule modules about the run of one rule. The
/// library itself reads none of it.
struct RunContext {
    CStringW partPath;      ///< Absolute path of the part's file; empty when there is none.
    CStringW partName;      ///< What users call the part; empty when there is no other name.
    CStringW partMaterial;  ///< As in the rule database; empty when it is not known.
    /// The unit of a part whose file names none, as "mm" or "in"; empty means millimetres.
    CStringW partUnits;
    /// Takes what the rule finds. Not owned; null when nobody listens.
    QORResultSet* results = nullptr;
    std::vector<ScriptParameter> parameters;  ///< Of the rule that runs.
    /// For lookups. Not owned; null when there is no database.
    qor_db::IDatabaseCollector* database = nullptr;
};

/// Makes a context the current one of this thread for as long as the scope lives, and restores the
/// former one afterwards. The context is not copied and must outlive the scope. Scopes nest, and
/// end in reverse order on the thread that began them.
class CORVANE_EXPORT RunContextScope {
public:
    /// Makes the context current.
    explicit RunContextScope(const RunContext& context);
    RunContextScope(const RunContextScope&) = delete;
    RunContextScope& operator=(const RunContextScope&) = delete;
    ~RunContextScope();

private:
    const RunContext* former_;
};

/// The current context of this thread; null outside every scope.
CORVANE_EXPORT const RunContext* CurrentRunContext();

/// The path of the part that is checked: the current context's, or, when that has none, the value
/// of the environment variable CORVANE_PART as it is. Empty when there is no part.
CORVANE_EXPORT CStringW CurrentPartPath();

}  // namespace corvane
