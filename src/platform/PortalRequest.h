#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>

// One request to a desktop portal: it hears the request's one answer, at the object path the
// portal gives it, for as long as it lives.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    using Answer = std::function<void(uint code, const QVariantMap &results)>;

    PortalRequest(QDBusConnection bus, Answer answer);
    ~PortalRequest() override;

    // Listens at `path` from now on, and no longer where it listened before.
    void listen(const QString &path);

    // Where the portal puts the request made with `token`, known before asking, so that an answer
    // given at once is not missed.
    [[nodiscard]] static QString pathFor(const QDBusConnection &bus, const QString &token);

private slots:
    void respond(uint code, const QVariantMap &results);

private:
    void stopListening();

    QDBusConnection m_bus;
    Answer m_answer;
    QString m_path;
};
