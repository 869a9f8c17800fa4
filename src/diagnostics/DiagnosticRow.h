#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

// One line of the diagnostics report: a caption, a value, and how the value should be read.
struct DiagnosticRow {
    enum class Signal { ok, warning, problem, neutral };
    enum class Style { standard, monospaced };

    QString label;
    QString value;
    Signal signal = Signal::neutral;
    Style style = Style::standard;
    std::optional<QString> detail;

    // The row as the view reads it: label, value, signal (its word), symbol (empty for none),
    // monospaced and detail (empty for none).
    [[nodiscard]] QVariantMap forViews() const;

    bool operator==(const DiagnosticRow &) const = default;
};

[[nodiscard]] QString rawValue(DiagnosticRow::Signal signal);
