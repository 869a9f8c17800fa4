#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>

// The running Velto on the session bus. It owns the application's bus name and answers the
// desktop's standard calls for applications, so that a second launch, or a launcher, can hand it
// folders and bring its window forward.
class ApplicationBusService : public QObject {
    Q_OBJECT

public:
    explicit ApplicationBusService(QDBusConnection bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);
    ~ApplicationBusService() override;

    // Exports the calls and takes the bus name made of `identifier`; false when the bus refused
    // either, because there is no bus or another process owns the name.
    bool publish(const QString &identifier);

    static QString interfaceName();

signals:
    // Someone asked for the window, with or without URIs.
    void activationRequested();
    // URIs to open, as a launcher passes them; each is followed by a request for the window.
    void openRequested(const QStringList &uris);
    // A launcher's action, by the name the desktop entry gives it.
    void actionRequested(const QString &name);

private:
    QDBusConnection m_bus;
    QString m_name;
    QString m_path;
};
