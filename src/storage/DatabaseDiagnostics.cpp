#include "DatabaseDiagnostics.h"

#include "SQLiteConnection.h"
#include "Schema.h"

#include <QFileInfo>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

DatabaseDiagnostics DatabaseDiagnostics::take(SQLiteConnection &connection, const QString &path)
{
    DatabaseDiagnostics snapshot;
    snapshot.path = path;
    snapshot.tables = connection.queryTextColumn(u"SELECT name FROM sqlite_master\n"
                                                 u"WHERE type = 'table' AND name NOT LIKE 'sqlite_%'\n"
                                                 u"ORDER BY name"_s);
    snapshot.fileExists = QFileInfo::exists(path);
    for (const QString &file : {path, path + u"-wal"_s, path + u"-shm"_s}) {
        const QFileInfo info(file);
        if (info.exists())
            snapshot.onDiskBytes += info.size();
    }
    snapshot.journalMode = connection.queryText(u"PRAGMA journal_mode"_s).value_or(u"unknown"_s);
    snapshot.foreignKeysEnabled = connection.queryInt(u"PRAGMA foreign_keys"_s) == 1;
    snapshot.schemaVersion = connection.queryInt(u"PRAGMA user_version"_s).value_or(0);
    snapshot.expectedSchemaVersion = Schema::currentVersion;
    snapshot.sqliteVersion = QString::fromUtf8(sqlite3_libversion());
    return snapshot;
}
