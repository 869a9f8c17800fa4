#include "DiagnosticRow.h"

using namespace Qt::StringLiterals;

namespace {

QString symbolOf(DiagnosticRow::Signal signal)
{
    switch (signal) {
    case DiagnosticRow::Signal::ok: return u"checkmark.circle.fill"_s;
    case DiagnosticRow::Signal::warning: return u"exclamationmark.circle.fill"_s;
    case DiagnosticRow::Signal::problem: return u"xmark.circle.fill"_s;
    case DiagnosticRow::Signal::neutral: break;
    }
    return {};
}

} // namespace

QString rawValue(DiagnosticRow::Signal signal)
{
    switch (signal) {
    case DiagnosticRow::Signal::ok: return u"ok"_s;
    case DiagnosticRow::Signal::warning: return u"warning"_s;
    case DiagnosticRow::Signal::problem: return u"problem"_s;
    case DiagnosticRow::Signal::neutral: break;
    }
    return u"neutral"_s;
}

QVariantMap DiagnosticRow::forViews() const
{
    return {{u"label"_s, label},
            {u"value"_s, value},
            {u"signal"_s, rawValue(signal)},
            {u"symbol"_s, symbolOf(signal)},
            {u"monospaced"_s, style == Style::monospaced},
            {u"detail"_s, detail.value_or(QString())}};
}
