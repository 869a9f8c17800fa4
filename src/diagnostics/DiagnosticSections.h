#pragma once

#include "DiagnosticRow.h"
#include "DiagnosticsReport.h"

#include <QDateTime>
#include <QList>
#include <QLocale>

#include <optional>

// The rows of each section of the diagnostics report, with the verdict each value deserves.
namespace DiagnosticSections {

[[nodiscard]] QList<DiagnosticRow> appGroup(const DiagnosticsReport &report);
[[nodiscard]] QList<DiagnosticRow> database(const DiagnosticsReport &report, const QLocale &locale);
[[nodiscard]] QList<DiagnosticRow> migrations(const DiagnosticsReport &report);
// The row that stands for the table list when the snapshot found no table; empty otherwise.
[[nodiscard]] QList<DiagnosticRow> missingTables(const DiagnosticsReport &report);
[[nodiscard]] QList<DiagnosticRow> notification(const DiagnosticsReport &report, bool isObserving, int received,
                                                const std::optional<QDateTime> &lastReceivedAt,
                                                const QLocale &locale);

} // namespace DiagnosticSections
