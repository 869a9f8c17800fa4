#include "TimerClock.h"

#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>

#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>
#include <memory>

namespace {

// Only when the kernel refuses a timer on the boot clock: a wake after a suspend then comes up to
// one period late, which the next tick makes good.
TimerClock::Cancel sleepOnMonotonicClock(std::chrono::milliseconds duration, TimerClock::Wake wake)
{
    auto *timer = new QTimer;
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, wake = std::move(wake)] {
        timer->deleteLater();
        wake();
    });
    timer->start(duration);
    return [guard = QPointer<QTimer>(timer)] {
        if (!guard)
            return;
        guard->stop();
        guard->deleteLater();
    };
}

// The boot clock goes on counting while the machine sleeps, unlike the clock behind QTimer.
TimerClock::Cancel sleepOnBootClock(std::chrono::milliseconds duration, TimerClock::Wake wake)
{
    const int descriptor = timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK);
    if (descriptor < 0)
        return sleepOnMonotonicClock(duration, std::move(wake));

    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(duration);
    itimerspec spec{};
    spec.it_value.tv_sec = seconds.count();
    spec.it_value.tv_nsec = std::chrono::nanoseconds(duration - seconds).count();
    if (timerfd_settime(descriptor, 0, &spec, nullptr) != 0) {
        ::close(descriptor);
        return sleepOnMonotonicClock(duration, std::move(wake));
    }

    auto *notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read);
    QObject::connect(notifier, &QObject::destroyed, [descriptor] { ::close(descriptor); });
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier, descriptor, wake = std::move(wake)] {
        std::uint64_t expirations = 0;
        if (::read(descriptor, &expirations, sizeof expirations) != sizeof expirations)
            return;
        notifier->setEnabled(false);
        notifier->deleteLater();
        wake();
    });
    return [guard = QPointer<QSocketNotifier>(notifier)] {
        if (!guard)
            return;
        guard->setEnabled(false);
        guard->deleteLater();
    };
}

} // namespace

TimerClock TimerClock::system()
{
    return {&VeltoDate::now, &sleepOnBootClock};
}
