#include "Database.h"

#include "StoreQueries.h"

using namespace Qt::StringLiterals;

Task<void> Database::setFinderTag(std::optional<QString> tag, QString id)
{
    // Silent: no other process reads the column, and the folder's own attribute already shows
    // the change to anyone who looks.
    return run([tag, id](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"UPDATE cards SET finder_tag = ? WHERE id = ?"_s, {tag, id});
    });
}
