#pragma once

#include "CommandAvailability.h"

#include <QList>
#include <QMetaObject>
#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class AppModel;

// The menu bar's commands. Each reads the board and the timer at the moment it runs and does
// nothing when they are absent; none has logic of its own beyond handing over to a model.
class VeltoCommands : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppModel *app READ app WRITE setApp NOTIFY appChanged)
    Q_PROPERTY(bool canAddFolder READ canAddFolder NOTIFY availabilityChanged)
    Q_PROPERTY(bool canOpenInFileManager READ canOpenInFileManager NOTIFY availabilityChanged)
    Q_PROPERTY(bool canRefresh READ canRefresh NOTIFY availabilityChanged)
    Q_PROPERTY(bool canManageTaxonomy READ canManageTaxonomy NOTIFY availabilityChanged)
    Q_PROPERTY(bool canMove READ canMove NOTIFY availabilityChanged)
    Q_PROPERTY(bool canSetStatus READ canSetStatus NOTIFY availabilityChanged)
    Q_PROPERTY(bool canToggleSortByPriority READ canToggleSortByPriority NOTIFY availabilityChanged)
    Q_PROPERTY(bool canStartTimer READ canStartTimer NOTIFY availabilityChanged)
    Q_PROPERTY(bool canStopTimer READ canStopTimer NOTIFY availabilityChanged)
    Q_PROPERTY(bool sortByPriority READ sortByPriority WRITE setSortByPriority NOTIFY availabilityChanged)

public:
    explicit VeltoCommands(QObject *parent = nullptr);

    [[nodiscard]] AppModel *app() const { return m_app; }
    void setApp(AppModel *app);

    [[nodiscard]] const CommandAvailability &availability() const { return m_availability; }
    [[nodiscard]] bool canAddFolder() const { return m_availability.addFolder; }
    [[nodiscard]] bool canOpenInFileManager() const { return m_availability.openInFileManager; }
    [[nodiscard]] bool canRefresh() const { return m_availability.refresh; }
    [[nodiscard]] bool canManageTaxonomy() const { return m_availability.manageTaxonomy; }
    [[nodiscard]] bool canMove() const { return m_availability.move; }
    [[nodiscard]] bool canSetStatus() const { return m_availability.setStatus; }
    [[nodiscard]] bool canToggleSortByPriority() const { return m_availability.toggleSortByPriority; }
    [[nodiscard]] bool canStartTimer() const { return m_availability.startTimer; }
    [[nodiscard]] bool canStopTimer() const { return m_availability.stopTimer; }
    [[nodiscard]] bool sortByPriority() const { return m_context.sortsByPriority; }
    void setSortByPriority(bool sort);

    Q_INVOKABLE void addFolder();
    Q_INVOKABLE void openInFileManager();
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void manageTaxonomy();
    // `move` counts as the card menu's: 0 top, 1 up, 2 down, 3 bottom.
    Q_INVOKABLE void moveSelectedCard(int move);
    Q_INVOKABLE void setSelectedCardStatus(int status);
    // The column before (-1) or after (+1) the selected card's; past the first or last column the
    // card stays.
    Q_INVOKABLE void moveSelectedCardAcross(int step);
    Q_INVOKABLE void startTimerOnSelectedCard();
    Q_INVOKABLE void stopTimer();

signals:
    void appChanged();
    void availabilityChanged();

private:
    void followModels();
    void update();
    [[nodiscard]] QString selectedCardID() const;

    QPointer<AppModel> m_app;
    QList<QMetaObject::Connection> m_modelConnections;
    CommandContext m_context;
    CommandAvailability m_availability;
};
