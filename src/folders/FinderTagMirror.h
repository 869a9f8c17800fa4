#pragma once

#include "Card.h"
#include "CardResolution.h"
#include "Task.h"
#include "VeltoServices.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QSettings>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

// Puts one tag naming its card's status on every tracked folder while the user wants it, and takes
// exactly that tag off again when they no longer do; other tags on the folder are never touched.
// It also holds the two preferences that the file manager's side reads from the shared container.
class FinderTagMirror : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board makes its one FinderTagMirror")
    Q_PROPERTY(bool isEnabled READ isEnabled NOTIFY isEnabledChanged)
    Q_PROPERTY(bool showsBadgesInFinder READ showsBadgesInFinder WRITE setShowsBadgesInFinder
                   NOTIFY showsBadgesInFinderChanged)
    Q_PROPERTY(QString lastError READ lastErrorText NOTIFY lastErrorChanged)

public:
    // Reads both preferences from the shared container's settings; without them, mirroring is off
    // and badges are on.
    explicit FinderTagMirror(VeltoServices services, QObject *parent = nullptr);

    // The tag that stands for `status` on a folder.
    [[nodiscard]] static QString wantedTag(CardStatus status);

    [[nodiscard]] bool isEnabled() const { return m_isEnabled; }
    [[nodiscard]] bool showsBadgesInFinder() const { return m_showsBadgesInFinder; }
    // Stores the preference and tells the other processes, so that badges are drawn again.
    void setShowsBadgesInFinder(bool shows);
    // The folders the last pass could not tag, one line each; absent after a pass without failures.
    [[nodiscard]] const std::optional<QString> &lastError() const { return m_lastError; }
    [[nodiscard]] QString lastErrorText() const { return m_lastError.value_or(QString()); }

    // Stores the preference, then brings every reachable folder in line with it, even when off.
    Task<void> setEnabled(bool enabled, QList<Card> cards, QHash<QString, CardResolution> resolutions);

    // Brings the tag of every reachable folder in line with its card, the folder first and the
    // card's record second; does nothing while off unless `force`. True when a record was written.
    Task<bool> sync(QList<Card> cards, QHash<QString, CardResolution> resolutions, bool force);

signals:
    void isEnabledChanged();
    void showsBadgesInFinderChanged();
    void lastErrorChanged();

private:
    void setIsEnabled(bool enabled);
    void setLastError(std::optional<QString> text);

    VeltoServices m_services;
    std::unique_ptr<QSettings> m_settings;
    bool m_isEnabled = false;
    bool m_showsBadgesInFinder = true;
    std::optional<QString> m_lastError;
};
