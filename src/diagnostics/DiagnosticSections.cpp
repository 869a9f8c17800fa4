#include "DiagnosticSections.h"

#include "PlatformText.h"

using namespace Qt::StringLiterals;

namespace DiagnosticSections {

namespace {

using Signal = DiagnosticRow::Signal;
using Style = DiagnosticRow::Style;

DiagnosticRow row(QString label, QString value, Signal signal = Signal::neutral, Style style = Style::standard,
                  std::optional<QString> detail = std::nullopt)
{
    return {std::move(label), std::move(value), signal, style, std::move(detail)};
}

Signal okOrProblem(bool ok)
{
    return ok ? Signal::ok : Signal::problem;
}

} // namespace

QList<DiagnosticRow> appGroup(const DiagnosticsReport &report)
{
    const bool throughSystem = report.container.route == AppGroupContainer::Route::entitlement;
    return {
        row(u"Identifier"_s, report.container.identifier, Signal::neutral, Style::monospaced),
        row(u"Container"_s, report.container.path, Signal::neutral, Style::monospaced),
        row(u"Resolved via"_s, rawValue(report.container.route), okOrProblem(throughSystem), Style::standard,
            throughSystem ? PlatformText::containerFoundThroughDataDirectory()
                          : PlatformText::containerBuiltFromAccountHome()),
    };
}

QList<DiagnosticRow> database(const DiagnosticsReport &report, const QLocale &locale)
{
    const DatabaseDiagnostics &snapshot = report.database;
    const bool isWal = snapshot.journalMode.toLower() == u"wal"_s;
    const bool isCurrent = snapshot.schemaVersion == snapshot.expectedSchemaVersion;
    return {
        row(u"File"_s, snapshot.path, Signal::neutral, Style::monospaced),
        row(u"Exists"_s, snapshot.fileExists ? u"yes"_s : u"no"_s, okOrProblem(snapshot.fileExists)),
        row(u"On disk"_s, locale.formattedDataSize(snapshot.onDiskBytes), Signal::neutral, Style::standard,
            u"Includes the -wal and -shm sidecars."_s),
        row(u"Journal mode"_s, snapshot.journalMode, okOrProblem(isWal), Style::standard,
            isWal ? std::nullopt : std::optional(u"A second process cannot read concurrently without WAL."_s)),
        row(u"Foreign keys"_s, snapshot.foreignKeysEnabled ? u"on"_s : u"off"_s,
            okOrProblem(snapshot.foreignKeysEnabled), Style::standard,
            snapshot.foreignKeysEnabled ? std::nullopt
                                        : std::optional(u"Every ON DELETE CASCADE in the schema is inert."_s)),
        row(u"Schema version"_s, u"%1 of %2"_s.arg(snapshot.schemaVersion).arg(snapshot.expectedSchemaVersion),
            isCurrent ? Signal::ok : Signal::warning),
        row(u"SQLite"_s, snapshot.sqliteVersion),
    };
}

QList<DiagnosticRow> migrations(const DiagnosticsReport &report)
{
    const MigrationOutcome &outcome = report.migration;
    if (outcome.applied.isEmpty())
        return {row(u"Applied now"_s, u"none — already at version %1"_s.arg(outcome.toVersion), Signal::ok)};
    return {row(u"Applied now"_s, outcome.applied.join(u", "_s), Signal::ok, Style::standard,
                u"Version %1 → %2."_s.arg(outcome.fromVersion).arg(outcome.toVersion))};
}

QList<DiagnosticRow> missingTables(const DiagnosticsReport &report)
{
    if (!report.database.tables.isEmpty())
        return {};
    return {row(u"Found"_s, u"none"_s, Signal::problem)};
}

QList<DiagnosticRow> notification(const DiagnosticsReport &report, bool isObserving, int received,
                                  const std::optional<QDateTime> &lastReceivedAt, const QLocale &locale)
{
    QString count = QString::number(received);
    if (lastReceivedAt)
        count += u" (last at %1)"_s.arg(locale.toString(lastReceivedAt->time(), QLocale::ShortFormat));
    return {
        row(u"Channel"_s, report.notificationName, Signal::neutral, Style::monospaced,
            PlatformText::notificationChannelDetail()),
        row(u"Observer"_s, isObserving ? u"registered"_s : u"not registered"_s, okOrProblem(isObserving)),
        row(u"Received here"_s, count),
    };
}

} // namespace DiagnosticSections
