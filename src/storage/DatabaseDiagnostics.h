#pragma once

#include <QList>
#include <QString>

class SQLiteConnection;

// What the running application can see of its own database file: where it is, how big, and
// whether the settings the shared store rests on are in force.
struct DatabaseDiagnostics {
    QString path;
    bool fileExists = false;
    // The file with its -wal and -shm sidecars.
    qint64 onDiskBytes = 0;
    QString journalMode;
    bool foreignKeysEnabled = false;
    qint64 schemaVersion = 0;
    qint64 expectedSchemaVersion = 0;
    QList<QString> tables;
    QString sqliteVersion;

    // Reads the snapshot of the file at `path` through `connection`; throws SQLiteError when one of
    // its queries fails. A sidecar that is missing or unreadable adds nothing.
    [[nodiscard]] static DatabaseDiagnostics take(SQLiteConnection &connection, const QString &path);

    bool operator==(const DatabaseDiagnostics &) const = default;
};
