#include "QmlWarningGuard.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

QtMessageHandler previousHandler = nullptr;
std::atomic<int> outsideTests{0};

bool isFromQmlCategory(const QMessageLogContext &context)
{
    return context.category != nullptr
           && (std::strcmp(context.category, "qml") == 0 || std::strcmp(context.category, "js") == 0
               || std::strncmp(context.category, "qt.qml", 6) == 0);
}

void guardHandler(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (previousHandler != nullptr)
        previousHandler(type, context, text);
    if (!QmlWarningGuard::isViewWarning(type, context, text))
        return;
    if (::testing::UnitTest::GetInstance()->current_test_info() == nullptr)
        ++outsideTests;
    else
        ADD_FAILURE() << "A view printed a warning: " << text.toStdString();
}

} // namespace

QmlWarningGuard::QmlWarningGuard() : m_previous(qInstallMessageHandler(guardHandler))
{
    previousHandler = m_previous;
}

QmlWarningGuard::~QmlWarningGuard()
{
    qInstallMessageHandler(m_previous);
}

bool QmlWarningGuard::isViewWarning(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return false;
    if (isFromQmlCategory(context))
        return true;
    // The engine reports most of its failures in the default category, with the file of the view.
    static const QRegularExpression viewFailure(
        u"\\.qml:\\d+|qrc:/|TypeError|ReferenceError|Cannot call method|Binding loop|binding loop|"
        u"Component is not ready|is not installed|is not a type|module \"[^\"]+\" "_s);
    return viewFailure.match(text).hasMatch();
}

int QmlWarningGuard::warningsOutsideTests() const
{
    return outsideTests.load();
}
