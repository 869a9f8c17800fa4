#include "VeltoCommands.h"

#include "AppModel.h"
#include "BoardModel.h"
#include "TimerModel.h"
#include "VocabularyIndex.h"

VeltoCommands::VeltoCommands(QObject *parent)
    : QObject(parent)
{
}

void VeltoCommands::setApp(AppModel *app)
{
    if (m_app == app)
        return;
    if (m_app)
        disconnect(m_app, nullptr, this, nullptr);
    m_app = app;
    if (m_app) {
        connect(m_app, &AppModel::boardChanged, this, &VeltoCommands::followModels);
        connect(m_app, &AppModel::timerChanged, this, &VeltoCommands::followModels);
    }
    followModels();
    emit appChanged();
}

// The board and the timer come and go with start-up; the commands listen to whichever are there.
void VeltoCommands::followModels()
{
    for (const auto &connection : std::as_const(m_modelConnections))
        disconnect(connection);
    m_modelConnections.clear();
    if (BoardModel *board = m_app ? m_app->board() : nullptr) {
        m_modelConnections << connect(board, &BoardModel::selectedCardIDChanged, this, &VeltoCommands::update)
                           << connect(board, &BoardModel::sortByPriorityChanged, this, &VeltoCommands::update);
    }
    if (TimerModel *timer = m_app ? m_app->timer() : nullptr)
        m_modelConnections << connect(timer, &TimerModel::runningChanged, this, &VeltoCommands::update);
    update();
}

void VeltoCommands::update()
{
    const BoardModel *board = m_app ? m_app->board() : nullptr;
    const TimerModel *timer = m_app ? m_app->timer() : nullptr;
    const CommandContext context{
        .hasBoard = board != nullptr,
        .hasSelection = board != nullptr && board->selectedCard().has_value(),
        .sortsByPriority = board != nullptr && board->sortByPriority(),
        .hasTimer = timer != nullptr,
        .timerIsRunning = timer != nullptr && timer->hasRunningSession(),
    };
    const CommandAvailability availability = CommandAvailability::in(context);
    if (context == m_context && availability == m_availability)
        return;
    m_context = context;
    m_availability = availability;
    emit availabilityChanged();
}

void VeltoCommands::setSortByPriority(bool sort)
{
    if (BoardModel *board = m_app ? m_app->board() : nullptr)
        board->setSortByPriority(sort);
}

QString VeltoCommands::selectedCardID() const
{
    const BoardModel *board = m_app ? m_app->board() : nullptr;
    return board ? board->selectedCardIDText() : QString();
}

void VeltoCommands::addFolder()
{
    if (BoardModel *board = m_app ? m_app->board() : nullptr)
        board->requestAddFoldersFromPanel();
}

void VeltoCommands::openInFileManager()
{
    if (BoardModel *board = m_app ? m_app->board() : nullptr; board && m_availability.openInFileManager)
        board->requestOpenInFinder(selectedCardID());
}

void VeltoCommands::refresh()
{
    if (BoardModel *board = m_app ? m_app->board() : nullptr)
        board->requestReload();
}

void VeltoCommands::manageTaxonomy()
{
    if (BoardModel *board = m_app ? m_app->board() : nullptr)
        board->setIsManagingTaxonomy(true);
}

void VeltoCommands::moveSelectedCard(int move)
{
    if (BoardModel *board = m_app ? m_app->board() : nullptr; board && m_availability.move)
        board->requestMoveInColumn(selectedCardID(), move);
}

void VeltoCommands::setSelectedCardStatus(int status)
{
    if (BoardModel *board = m_app ? m_app->board() : nullptr; board && m_availability.setStatus)
        board->requestSetStatus(selectedCardID(), status);
}

void VeltoCommands::moveSelectedCardAcross(int step)
{
    BoardModel *board = m_app ? m_app->board() : nullptr;
    if (!board || !m_availability.setStatus)
        return;
    if (const auto card = board->selectedCard())
        board->requestSetStatus(card->id, VocabularyIndex::indexOf(allCardStatuses, card->status) + step);
}

void VeltoCommands::startTimerOnSelectedCard()
{
    BoardModel *board = m_app ? m_app->board() : nullptr;
    TimerModel *timer = m_app ? m_app->timer() : nullptr;
    if (!board || !timer)
        return;
    if (const auto card = board->selectedCard())
        timer->start(*card);
}

void VeltoCommands::stopTimer()
{
    if (TimerModel *timer = m_app ? m_app->timer() : nullptr; timer && timer->hasRunningSession())
        timer->requestStop(true);
}
