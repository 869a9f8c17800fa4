#pragma once

#include "TimerMenuContent.h"

#include <QObject>
#include <QPointer>

#include <memory>

class BoardModel;
class QMenu;
class QSystemTrayIcon;
class TimerModel;

// The timer in the desktop's tray: an icon that shows whether a session runs, a tooltip with its
// clock and card, and the timer's menu, rebuilt from the models whenever it opens and kept up to
// date while it is open. Where the desktop has no tray, nothing shows and nothing fails.
class TimerTray : public QObject {
    Q_OBJECT

public:
    explicit TimerTray(QObject *parent = nullptr);
    ~TimerTray() override;

    // The models appear once start-up has built them; until then the menu says Velto is starting.
    void setModels(TimerModel *timer, BoardModel *board);

    [[nodiscard]] QMenu *menu() const { return m_menu.get(); }
    [[nodiscard]] QString toolTip() const;
    [[nodiscard]] bool showsRecording() const { return m_showsRecording; }

signals:
    // "Show Velto": the main window should come forward.
    void showRequested();

private:
    void rebuildMenu();
    void refreshIfOpen();
    void updateLabel();
    void trigger(const TimerMenuContent::Entry &entry);

    QPointer<TimerModel> m_timer;
    QPointer<BoardModel> m_board;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    QList<TimerMenuContent::Entry> m_shown;
    bool m_showsRecording = false;
    QList<QMetaObject::Connection> m_modelConnections;
};
