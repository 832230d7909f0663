#include <corvane/database/IDatabaseCollector.h>
#include <corvane/database/QORDataHelper.h>

using namespace qor_db;

int main() {
    IDatabaseCollector* database = QORDataHelper::getInstance();
    if (!database || !database->status().ok()) return 1;

    // A lookup: the drill for the hole that an M6 thread is tapped into.
    const auto thread = database->reference().thread(u"M6");
    if (!thread) return 2;  // thread.status() says why
    const double drill = thread->tapDrill;

    // A transaction ends in commit, or is rolled back where it goes out of scope.
    Transaction transaction(*database);
    const auto makeTable = database->prepare(
        u"CREATE TABLE IF NOT EXISTS site_tools (name NVARCHAR(40), diameter FLOAT)");
    if (!makeTable || !(*makeTable)->execute({}).ok()) return 3;
    const auto insert = database->prepare(u"INSERT INTO site_tools VALUES (?, ?)");
    if (!insert || !(*insert)->execute({u"T12", drill}).ok()) return 4;
    if (!transaction.commit().ok()) return 5;

    // A query: values go in as parameters, never as text.
    const auto select = database->prepare(u"SELECT name FROM site_tools WHERE diameter <= ?");
    if (!select) return 6;
    IQuery& query = **select;
    CStringW last;
    for (Status status = query.execute({5.0}); query.next();)
        last = query.row().text(0);
    if (!query.status().ok()) return 7;

    return drill == 5 && last == u"T12" ? 0 : 8;
}
