#pragma once

#include "Card.h"
#include "FocusPresentation.h"
#include "FocusSettings.h"
#include "Task.h"
#include "TimeSession.h"
#include "TimerClock.h"
#include "VeltoServices.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <coroutine>
#include <memory>
#include <optional>

// Knows which session runs and for how long. The truth of "running" is the open row in the
// database; this model mirrors it, counts the seconds and drives the focus panel's state.
class TimerModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes its one TimerModel")
    Q_PROPERTY(bool hasRunningSession READ hasRunningSession NOTIFY runningChanged)
    Q_PROPERTY(QString runningCardID READ runningCardID NOTIFY runningChanged)
    Q_PROPERTY(QString runningCardName READ runningCardNameText NOTIFY runningCardNameChanged)
    Q_PROPERTY(double elapsed READ elapsed NOTIFY elapsedChanged)
    Q_PROPERTY(QString errorMessage READ errorMessageText NOTIFY errorMessageChanged)
    // The session the focus panel shows, running or waiting for its rating; see TimerModelForPanel.cpp.
    Q_PROPERTY(PresentationKind presentationKind READ presentationKind NOTIFY presentationChanged)
    Q_PROPERTY(QString presentedSessionID READ presentedSessionID NOTIFY presentationChanged)
    Q_PROPERTY(double presentedTargetSeconds READ presentedTargetSeconds NOTIFY presentationChanged)
    Q_PROPERTY(double presentedLengthSeconds READ presentedLengthSeconds NOTIFY presentationChanged)
    Q_PROPERTY(bool presentedMetTarget READ presentedMetTarget NOTIFY presentationChanged)
    // Each mood as a map of `raw`, `label` and `symbol`, in the order the rating offers them.
    Q_PROPERTY(QVariantList moods READ moods CONSTANT)

public:
    enum class PresentationKind { Hidden, Running, Rating };
    Q_ENUM(PresentationKind)

    TimerModel(VeltoServices services, std::shared_ptr<FocusSettings> focus, TimerClock clock = TimerClock::system(),
               QObject *parent = nullptr);
    ~TimerModel() override;

    [[nodiscard]] const std::optional<TimeSession> &running() const { return m_running; }
    [[nodiscard]] const std::optional<QString> &runningCardName() const { return m_runningCardName; }
    [[nodiscard]] double elapsed() const { return m_elapsed; }
    [[nodiscard]] const std::optional<QString> &errorMessage() const { return m_errorMessage; }
    [[nodiscard]] const std::optional<TimeSession> &justStopped() const { return m_justStopped; }
    [[nodiscard]] const FocusPresentation &presentation() const { return m_presentation; }

    [[nodiscard]] bool hasRunningSession() const { return m_running.has_value(); }
    [[nodiscard]] bool isRunning(const Card &card) const { return m_running && m_running->cardID == card.id; }
    [[nodiscard]] QString runningCardID() const { return m_running ? m_running->cardID : QString(); }
    [[nodiscard]] QString runningCardNameText() const { return m_runningCardName.value_or(QString()); }
    [[nodiscard]] QString errorMessageText() const { return m_errorMessage.value_or(QString()); }

    // Each operation reports its failure in errorMessage, never to the caller; stopSilently
    // reports none at all.
    Task<> start(Card card);
    Task<std::optional<TimeSession>> stop(bool rate);
    Task<> stopSilently();
    // Ends the prompt for the rating of `sessionID`, storing `mood` first when there is one. A
    // failure to store keeps the prompt up, with the reason in errorMessage.
    Task<> rate(QString sessionID, std::optional<Mood> mood);
    // Adopts the session left open at launch, which goes on counting from its old start.
    Task<> reload();

    // The card was removed from the board.
    Q_INVOKABLE void forget(const QString &cardID);
    Q_INVOKABLE void clearError();

    // What the views call; each starts the operation and returns at once.
    Q_INVOKABLE void requestStop(bool rate);
    Q_INVOKABLE void requestStopSilently();
    Q_INVOKABLE void requestReload();
    // An empty `mood` skips the rating.
    Q_INVOKABLE void requestRate(const QString &sessionID, const QString &mood);

    [[nodiscard]] PresentationKind presentationKind() const;
    [[nodiscard]] QString presentedSessionID() const;
    [[nodiscard]] double presentedTargetSeconds() const;
    [[nodiscard]] double presentedLengthSeconds() const;
    [[nodiscard]] bool presentedMetTarget() const;
    [[nodiscard]] static QVariantList moods();

signals:
    void runningChanged();
    void runningCardNameChanged();
    void elapsedChanged();
    void errorMessageChanged();
    void justStoppedChanged();
    void presentationChanged();

private:
    // The handle of one tick loop. Cancelling it ends the loop at its next step and cuts a pending
    // sleep short, so that the loop's frame goes away too.
    struct Ticker {
        bool cancelled = false;
        TimerClock::Cancel cancelSleep;
        std::coroutine_handle<> sleeping;
    };
    struct TickerSleep;

    static Task<> tick(QPointer<TimerModel> model, std::shared_ptr<Ticker> ticker);

    void setRunning(const std::optional<TimeSession> &running);
    void setRunningCardName(const std::optional<QString> &name);
    void setElapsed(double elapsed);
    void setErrorMessage(const std::optional<QString> &message);
    void setJustStopped(const std::optional<TimeSession> &session);
    void apply(const FocusPresentation::Event &event);

    [[nodiscard]] double elapsedSince(VeltoDate start) const;
    [[nodiscard]] const TimeSession *presentedSession() const;
    void restartTicker();
    void cancelTicker();
    void clearRunning();

    VeltoServices m_services;
    std::shared_ptr<FocusSettings> m_focus;
    TimerClock m_clock;
    std::optional<TimeSession> m_running;
    std::optional<QString> m_runningCardName;
    double m_elapsed = 0.0;
    std::optional<QString> m_errorMessage;
    std::optional<TimeSession> m_justStopped;
    FocusPresentation m_presentation;
    std::shared_ptr<Ticker> m_ticker;
};
