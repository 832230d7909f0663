#include "Statements.h"

namespace collector {

using namespace qor_db;

Status executeOnce(IDatabaseConnection& database, std::u16string_view statement,
                   const std::vector<Value>& parameters) {
    const Outcome<std::unique_ptr<IQuery>> query = database.prepare(statement);
    return query.ok() ? (*query)->execute(parameters) : query.status();
}

}  // namespace collector
