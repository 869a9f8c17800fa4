#pragma once

#include <QString>
#include <QtMessageHandler>

// Fails the running test on any warning of the QML engine or a view: a TypeError, a
// ReferenceError, a binding loop, a component or module that failed to load. Such a warning is a
// defect a user meets even when every expectation of the test held.
class QmlWarningGuard {
public:
    QmlWarningGuard();
    ~QmlWarningGuard();

    QmlWarningGuard(const QmlWarningGuard &) = delete;
    QmlWarningGuard &operator=(const QmlWarningGuard &) = delete;

    // Whether a message, as Qt hands it over, is one of those.
    [[nodiscard]] static bool isViewWarning(QtMsgType type, const QMessageLogContext &context, const QString &text);

    [[nodiscard]] int warningsOutsideTests() const;

private:
    QtMessageHandler m_previous;
};
