#include "FinderTagError.h"

#include "PlatformText.h"

using namespace Qt::StringLiterals;

namespace {

QString systemFailure(const char *call, int code)
{
    return u"%1 failed: %2 (errno %3)"_s.arg(QLatin1StringView(call), qt_error_string(code)).arg(code);
}

QString describe(const FinderTagError::Reason &reason)
{
    if (const auto *newline = std::get_if<FinderTagError::TagContainsNewline>(&reason))
        return PlatformText::tagContainsNewline(FinderTagError::quoted(newline->tag));
    if (const auto *comma = std::get_if<FinderTagError::TagContainsComma>(&reason))
        return PlatformText::tagContainsComma(FinderTagError::quoted(comma->tag));
    if (const auto *path = std::get_if<FinderTagError::PathUnrepresentable>(&reason))
        return u"could not form a filesystem path for "_s + path->url.path();
    if (const auto *write = std::get_if<FinderTagError::WriteFailed>(&reason))
        return systemFailure("setxattr", write->code);
    if (const auto *read = std::get_if<FinderTagError::ReadFailed>(&reason))
        return systemFailure("getxattr", read->code);
    return PlatformText::tagsUnreadable();
}

QString escaped(char32_t scalar)
{
    switch (scalar) {
    case U'\0': return u"\\0"_s;
    case U'\t': return u"\\t"_s;
    case U'\n': return u"\\n"_s;
    case U'\r': return u"\\r"_s;
    case U'"': return u"\\\""_s;
    case U'\\': return u"\\\\"_s;
    default: break;
    }
    if (QChar::category(scalar) == QChar::Other_Control)
        return u"\\u{"_s + QString::number(uint(scalar), 16).toUpper() + u'}';
    return QString::fromUcs4(&scalar, 1);
}

} // namespace

FinderTagError::FinderTagError(Reason reason) : VeltoError(describe(reason)), m_reason(std::move(reason)) {}

QString FinderTagError::quoted(const QString &text)
{
    QString result = u"\""_s;
    for (char32_t scalar : text.toUcs4())
        result += escaped(scalar);
    return result + u'"';
}
