#include "TimerTray.h"

#include "BoardModel.h"
#include "TimeAggregation.h"
#include "TimerModel.h"

#include <QFile>
#include <QIcon>
#include <QMenu>
#include <QPainter>
#include <QSvgRenderer>
#include <QSystemTrayIcon>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// One of the application's symbols as an icon, drawn in `colour` in place of the set's grey.
QIcon symbolIcon(const QString &name, const QColor &colour)
{
    QFile file(u":/qt/qml/Velto/app/symbols/"_s + name + u".svg"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString svg = QString::fromUtf8(file.readAll());
    svg.replace(u"#8E8E93"_s, colour.name(QColor::HexRgb), Qt::CaseInsensitive);
    QSvgRenderer renderer(svg.toUtf8());
    QIcon icon;
    for (const int side : {16, 22, 32, 48}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

// A card named "R&D" shows its ampersand rather than a shortcut letter.
QString menuText(const QString &text)
{
    QString escaped = text;
    return escaped.replace(u'&', u"&&"_s);
}

QString actionName(const TimerMenuContent::Entry &entry)
{
    using Action = TimerMenuContent::Entry::Action;
    switch (entry.action) {
    case Action::stop: return u"trayStopTimer"_s;
    case Action::start: return u"trayStart_"_s + entry.text;
    case Action::show: return u"trayShowVelto"_s;
    case Action::none: break;
    }
    return {};
}

} // namespace

TimerTray::TimerTray(QObject *parent) : QObject(parent), m_menu(std::make_unique<QMenu>())
{
    m_menu->setObjectName(u"timerTrayMenu"_s);
    connect(m_menu.get(), &QMenu::aboutToShow, this, &TimerTray::rebuildMenu);
    rebuildMenu();
    if (QSystemTrayIcon::isSystemTrayAvailable()) {
        m_icon = std::make_unique<QSystemTrayIcon>();
        m_icon->setContextMenu(m_menu.get());
        // A left click on a tray icon brings its application forward; the menu is on the right.
        connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger)
                emit showRequested();
        });
    }
    updateLabel();
    if (m_icon)
        m_icon->show();
}

TimerTray::~TimerTray()
{
    // The icon lets go of its menu before the menu goes.
    m_icon.reset();
}

void TimerTray::setModels(TimerModel *timer, BoardModel *board)
{
    for (const auto &connection : std::exchange(m_modelConnections, {}))
        disconnect(connection);
    m_timer = timer;
    m_board = board;
    if (m_timer) {
        for (const auto signal : {&TimerModel::runningChanged, &TimerModel::runningCardNameChanged,
                                  &TimerModel::elapsedChanged}) {
            m_modelConnections.append(connect(m_timer, signal, this, &TimerTray::updateLabel));
            m_modelConnections.append(connect(m_timer, signal, this, &TimerTray::refreshIfOpen));
        }
    }
    if (m_board)
        m_modelConnections.append(connect(m_board, &BoardModel::cardsChanged, this, &TimerTray::refreshIfOpen));
    updateLabel();
    refreshIfOpen();
}

QString TimerTray::toolTip() const
{
    if (!m_timer || !m_timer->hasRunningSession())
        return u"Velto"_s;
    QString text = TimeAggregation::clockText(m_timer->elapsed());
    if (const auto &name = m_timer->runningCardName())
        text += u' ' + TimerMenuContent::shortenedName(*name);
    return text;
}

void TimerTray::updateLabel()
{
    const bool recording = m_timer && m_timer->hasRunningSession();
    if (m_icon) {
        if (recording != m_showsRecording || m_icon->icon().isNull())
            m_icon->setIcon(recording ? symbolIcon(u"record.circle"_s, QColor(0xFF, 0x3B, 0x30))
                                      : symbolIcon(u"timer"_s, QColor(0x8E, 0x8E, 0x93)));
        m_icon->setToolTip(toolTip());
    }
    m_showsRecording = recording;
}

void TimerTray::refreshIfOpen()
{
    if (m_menu->isVisible())
        rebuildMenu();
}

void TimerTray::rebuildMenu()
{
    using Kind = TimerMenuContent::Entry::Kind;
    QList<TimerMenuContent::Entry> entries;
    if (!m_timer || !m_board)
        entries.append(TimerMenuContent::Entry::line(u"Velto is still starting up."_s));
    else
        entries = TimerMenuContent::entries(m_timer->runningCardName(), m_timer->elapsed(), m_timer->runningCardID(),
                                            m_board->cards());
    if (entries == m_shown)
        return;

    // While open, a change of words alone - the clock of the running session - is written into
    // the entries in place, so the pointer's entry stays highlighted.
    const QList<QAction *> actions = m_menu->actions();
    const bool sameShape = entries.size() == m_shown.size() && std::ranges::equal(entries, m_shown, [](const auto &a, const auto &b) {
        return a.kind == b.kind && a.action == b.action && a.cardID == b.cardID && a.enabled == b.enabled;
    });
    if (sameShape) {
        for (qsizetype i = 0; i < entries.size(); ++i)
            actions.at(i)->setText(menuText(entries.at(i).text));
        m_shown = entries;
        return;
    }
    m_menu->clear();
    for (const auto &entry : entries) {
        if (entry.kind == Kind::separator) {
            m_menu->addSeparator();
            continue;
        }
        QAction *action = m_menu->addAction(menuText(entry.text));
        action->setEnabled(entry.enabled);
        action->setObjectName(actionName(entry));
        if (entry.kind == Kind::button)
            connect(action, &QAction::triggered, this, [this, entry] { trigger(entry); });
    }
    m_shown = entries;
}

void TimerTray::trigger(const TimerMenuContent::Entry &entry)
{
    using Action = TimerMenuContent::Entry::Action;
    switch (entry.action) {
    case Action::stop:
        if (m_timer)
            m_timer->stop(true);
        break;
    case Action::start:
        if (m_timer && m_board)
            for (const Card &card : m_board->cards())
                if (card.id == entry.cardID) {
                    m_timer->start(card);
                    break;
                }
        break;
    case Action::show:
        emit showRequested();
        break;
    case Action::none:
        break;
    }
}
