#pragma once

// Qt's headers first: moc cannot read <coroutine> before it has read theirs.
#include <QObject>
#include <QPointer>

#include "SleepInhibitor.h"
#include "Task.h"
#include "TimerClock.h"

#include <chrono>
#include <functional>
#include <memory>

class QCoreApplication;
class QSocketNotifier;

// Holds back every way of quitting - the quit command, closing the last window, SIGTERM and
// SIGINT - while a session runs, so the session is closed in the database first. The timer gets
// three seconds on a clock that counts through a suspend; Velto quits then in any case, and only
// once. A system sleep stops a running session the same way. The two hooks answer false and do nothing until start-up wires them.
class VeltoAppDelegate : public QObject {
    Q_OBJECT

public:
    using HasRunningTimer = std::function<bool()>;
    using StopRunningTimer = std::function<Task<>()>;
    using Sleep = std::function<TimerClock::Cancel(std::chrono::milliseconds, TimerClock::Wake)>;
    using Quit = std::function<void()>;

    static constexpr std::chrono::milliseconds quitGrace{3000};

    // `quit` ends the event loop (when empty, the application's); `sleep` is the watchdog's clock.
    explicit VeltoAppDelegate(Quit quit = defaultQuit(), Sleep sleep = TimerClock::system().sleep,
                              QObject *parent = nullptr);
    ~VeltoAppDelegate() override;

    // The delegate made as a child of `application`, if any.
    [[nodiscard]] static VeltoAppDelegate *of(const QCoreApplication *application);

    void setHooks(HasRunningTimer hasRunningTimer, StopRunningTimer stopRunningTimer);
    [[nodiscard]] bool hasRunningTimer() const { return m_hasRunningTimer(); }
    [[nodiscard]] Task<> stopRunningTimer() const { return m_stopRunningTimer(); }

    // Filters the application's quit events from now on.
    void watchQuitEvents(QCoreApplication *application);
    // Turns SIGTERM and SIGINT into a quit request through a pipe the event loop reads. One
    // delegate at a time may do this: a signal handler can only reach one pipe.
    void watchTerminationSignals();

    // Stops a running session silently before each system sleep, with no time limit but logind's.
    void watchSystemSleep(const QDBusConnection &systemBus);
    [[nodiscard]] const SleepInhibitor *sleepInhibitor() const { return m_sleepInhibitor.get(); }

    // Quits at once when no session runs; otherwise stops it first, for three seconds at most.
    // A request while one is under way joins it.
    void requestQuit();
    [[nodiscard]] bool isQuitDeferred() const { return m_isQuitDeferred; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static Quit defaultQuit();
    static Task<> deferQuit(QPointer<VeltoAppDelegate> self);
    static Task<> stopBeforeSleep(QPointer<VeltoAppDelegate> self);
    void readSignalPipe();
    void reply();

    Quit m_quit;
    Sleep m_sleep;
    HasRunningTimer m_hasRunningTimer;
    StopRunningTimer m_stopRunningTimer;
    bool m_isQuitDeferred = false;
    bool m_didReplyToTermination = false;
    QPointer<QCoreApplication> m_application;
    int m_signalPipe[2] = {-1, -1};
    std::unique_ptr<QSocketNotifier> m_signalNotifier;
    std::unique_ptr<SleepInhibitor> m_sleepInhibitor;
};
