#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

// The payload-free signal that tells every process sharing the database that something changed and
// should be read again. It travels on the session bus as a signal of no owned bus name, so any
// process of the user can send it and any can listen; with no bus, nothing is sent or heard.
struct DatabaseChangeNotifier {
    // One registration of a handler; it lasts exactly as long as this object.
    class Observation {
    public:
        ~Observation();
        Observation(const Observation &) = delete;
        Observation &operator=(const Observation &) = delete;

    private:
        friend struct DatabaseChangeNotifier;
        Observation(QString interface, QString member, std::unique_ptr<QObject> receiver);

        QString m_interface;
        QString m_member;
        std::unique_ptr<QObject> m_receiver;
    };

    // The channel: the shared container's identifier followed by ".databaseDidChange".
    QString name;

    bool operator==(const DatabaseChangeNotifier &) const = default;

    // The channel every process sharing the container of `identifier` forms alike.
    static DatabaseChangeNotifier forAppGroup(const QString &identifier);

    static QString objectPath();

    // The bus interface of the channel: every part of `name` before its last dot, each made a valid
    // element. Absent when that leaves fewer than two elements or too long a name.
    [[nodiscard]] std::optional<QString> busInterface() const;
    // The signal's name: the part of `name` after its last dot, made a valid element.
    [[nodiscard]] QString busMember() const;

    // Queues the signal and returns; safe on any thread, and a failure goes unnoticed, because the
    // data is safe in the database either way.
    void post() const;

    // Calls `handler` on the calling thread, once per signal, until the observation is dropped on
    // that same thread; null when there is no bus. The handler must hold its owner weakly, or the
    // owner and its observation would keep each other alive.
    [[nodiscard]] std::shared_ptr<Observation> observe(std::function<void()> handler) const;
};
