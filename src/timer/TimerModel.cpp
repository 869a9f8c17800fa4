#include "TimerModel.h"

#include "AssignIfChanged.h"
#include "Identifier.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <chrono>
#include <exception>
#include <functional>
#include <utility>

using namespace std::chrono_literals;

namespace {

QString describe(const std::exception &failure)
{
    return QString::fromUtf8(failure.what());
}

} // namespace

// One second of the sleep clock, ended early by cancellation.
struct TimerModel::TickerSleep {
    std::shared_ptr<Ticker> ticker;
    std::function<TimerClock::Cancel(std::chrono::milliseconds, TimerClock::Wake)> sleep;

    bool await_ready() const noexcept { return ticker->cancelled; }

    void await_suspend(std::coroutine_handle<> awaiting)
    {
        ticker->sleeping = awaiting;
        ticker->cancelSleep = sleep(1s, [ticker = ticker] {
            ticker->cancelSleep = {};
            if (auto resumed = std::exchange(ticker->sleeping, {}))
                resumed.resume();
        });
    }

    void await_resume() const noexcept {}
};

TimerModel::TimerModel(VeltoServices services, std::shared_ptr<FocusSettings> focus, TimerClock clock, QObject *parent)
    : QObject(parent), m_services(std::move(services)), m_focus(std::move(focus)), m_clock(std::move(clock))
{
}

TimerModel::~TimerModel()
{
    cancelTicker();
}

Task<> TimerModel::start(Card card)
{
    QPointer<TimerModel> self(this);
    const auto database = m_services.database;
    const VeltoDate now = m_clock.now();

    TimeSession session;
    session.id = newIdentifier();
    session.cardID = card.id;
    session.startedAt = now.floored();
    session.source = TimeSession::Source::manual;
    session.confidence = 1.0;
    session.targetSeconds = m_focus->targetSeconds();

    try {
        // Closes whatever else runs, of any card, at this same moment; that session gets no rating.
        co_await database->startSession(session, now);
    } catch (const std::exception &failure) {
        if (self)
            self->setErrorMessage(describe(failure));
        co_return;
    }
    if (!self)
        co_return;
    setRunning(session);
    setRunningCardName(card.displayName);
    setElapsed(0.0);
    setJustStopped(std::nullopt);
    apply(FocusPresentation::SessionStarted{session});
    restartTicker();
    setErrorMessage(std::nullopt);
}

Task<std::optional<TimeSession>> TimerModel::stop(bool rate)
{
    QPointer<TimerModel> self(this);
    const auto database = m_services.database;
    const VeltoDate now = m_clock.now();

    std::optional<TimeSession> closed;
    try {
        closed = co_await database->stopRunningSession(now);
    } catch (const std::exception &failure) {
        // The display goes on counting, so the user can simply try again.
        if (self)
            self->setErrorMessage(describe(failure));
        co_return std::nullopt;
    }
    if (!self)
        co_return closed;

    if (closed && rate) {
        setJustStopped(closed);
        apply(FocusPresentation::RatingRaised{*closed});
    } else if (closed) {
        apply(FocusPresentation::SessionEndedSilently{});
    } else if (std::holds_alternative<FocusPresentation::Running>(m_presentation.state)) {
        // Someone else closed the row; a rating still pending for an earlier session stays.
        apply(FocusPresentation::SessionEndedSilently{});
    }
    clearRunning();
    co_return closed;
}

Task<> TimerModel::stopSilently()
{
    QPointer<TimerModel> self(this);
    const auto database = m_services.database;
    const VeltoDate now = m_clock.now();

    try {
        co_await database->stopRunningSession(now);
    } catch (const std::exception &) {
        // Called at sleep and at quit: nobody is left to read a failure.
    }
    if (!self)
        co_return;
    apply(FocusPresentation::SessionEndedSilently{});
    clearRunning();
}

Task<> TimerModel::rate(QString sessionID, std::optional<Mood> mood)
{
    QPointer<TimerModel> self(this);
    const auto database = m_services.database;
    const TimeSession *rated = presentedSession();
    if (mood && rated && rated->id == sessionID && presentationKind() == PresentationKind::Rating) {
        TimeSession session = *rated;
        session.mood = mood;
        try {
            co_await database->updateSession(session, true);
        } catch (const std::exception &failure) {
            if (self)
                self->setErrorMessage(describe(failure));
            co_return;
        }
        if (!self)
            co_return;
    }
    apply(FocusPresentation::RatingResolved{sessionID});
}

Task<> TimerModel::reload()
{
    QPointer<TimerModel> self(this);
    const auto database = m_services.database;

    std::optional<TimeSession> running;
    try {
        running = co_await database->runningSession();
    } catch (const std::exception &failure) {
        if (self)
            self->setErrorMessage(describe(failure));
        co_return;
    }
    if (!self)
        co_return;
    setRunning(running);
    if (!running) {
        setRunningCardName(std::nullopt);
        setElapsed(0.0);
        cancelTicker();
        co_return;
    }

    std::optional<Card> card;
    try {
        card = co_await database->card(running->cardID);
    } catch (const std::exception &failure) {
        if (self)
            self->setErrorMessage(describe(failure));
        co_return;
    }
    if (!self)
        co_return;
    setRunningCardName(card ? std::optional(card->displayName) : std::nullopt);
    setElapsed(elapsedSince(running->startedAt));
    // Leaves the focus panel as it is: an adopted session times on without opening it.
    apply(FocusPresentation::SessionAdopted{*running});
    restartTicker();
}

void TimerModel::forget(const QString &cardID)
{
    bool touched = false;
    if (m_running && m_running->cardID == cardID) {
        clearRunning();
        touched = true;
    }
    if (m_justStopped && m_justStopped->cardID == cardID) {
        setJustStopped(std::nullopt);
        touched = true;
    }
    if (touched)
        apply(FocusPresentation::SessionEndedSilently{});
}

void TimerModel::clearError()
{
    setErrorMessage(std::nullopt);
}

void TimerModel::requestStop(bool rate)
{
    stop(rate);
}

void TimerModel::requestStopSilently()
{
    stopSilently();
}

void TimerModel::requestReload()
{
    reload();
}

void TimerModel::requestRate(const QString &sessionID, const QString &mood)
{
    rate(sessionID, moodFromRawValue(mood));
}

Task<> TimerModel::tick(QPointer<TimerModel> model, std::shared_ptr<Ticker> ticker)
{
    while (!ticker->cancelled && model && model->m_running) {
        model->setElapsed(model->elapsedSince(model->m_running->startedAt));
        // Named, not a temporary: gcc 12 destroys a temporary awaitable of a loop body twice.
        TickerSleep sleep{ticker, model->m_clock.sleep};
        co_await sleep;
    }
}

void TimerModel::setRunning(const std::optional<TimeSession> &running)
{
    if (assignIfChanged(m_running, running))
        emit runningChanged();
}

void TimerModel::setRunningCardName(const std::optional<QString> &name)
{
    if (assignIfChanged(m_runningCardName, name))
        emit runningCardNameChanged();
}

void TimerModel::setElapsed(double elapsed)
{
    if (assignIfChanged(m_elapsed, elapsed))
        emit elapsedChanged();
}

void TimerModel::setErrorMessage(const std::optional<QString> &message)
{
    if (assignIfChanged(m_errorMessage, message))
        emit errorMessageChanged();
}

void TimerModel::setJustStopped(const std::optional<TimeSession> &session)
{
    if (assignIfChanged(m_justStopped, session))
        emit justStoppedChanged();
}

void TimerModel::apply(const FocusPresentation::Event &event)
{
    FocusPresentation next = m_presentation.applied(event);
    if (assignIfChanged(m_presentation, std::move(next)))
        emit presentationChanged();
}

// Whole seconds, and negative when the wall clock was put back behind the start.
double TimerModel::elapsedSince(VeltoDate start) const
{
    return m_clock.now().floored().secondsSinceReferenceDate() - start.secondsSinceReferenceDate();
}

void TimerModel::restartTicker()
{
    cancelTicker();
    m_ticker = std::make_shared<Ticker>();
    tick(QPointer<TimerModel>(this), m_ticker);
}

void TimerModel::cancelTicker()
{
    const auto ticker = std::exchange(m_ticker, nullptr);
    if (!ticker)
        return;
    ticker->cancelled = true;
    if (const auto cancelSleep = std::exchange(ticker->cancelSleep, {}))
        cancelSleep();
    // Resumed from the event loop rather than here, so that the loop never runs inside the
    // operation that cancelled it.
    if (const auto sleeping = std::exchange(ticker->sleeping, {}))
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [sleeping] { sleeping.resume(); }, Qt::QueuedConnection);
}

void TimerModel::clearRunning()
{
    setRunning(std::nullopt);
    setRunningCardName(std::nullopt);
    setElapsed(0.0);
    cancelTicker();
}
