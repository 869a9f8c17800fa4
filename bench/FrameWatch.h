#pragma once

#include <QEventLoop>
#include <QObject>
#include <QQuickWindow>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <optional>
#include <vector>

using Clock = std::chrono::steady_clock;

// Tells when the first frame that shows a change reached the screen. A frame counts only if its
// scene was synchronized after the change was armed, so a frame already under way with the old
// scene is passed over. The render loop may run on its own thread: the flags are atomic, and the
// swap wakes the waiting event loop with a posted call.
class FrameWatch {
public:
    explicit FrameWatch(QQuickWindow &window)
    {
        QObject::connect(&window, &QQuickWindow::beforeSynchronizing, &m_loop, [this] { noteSynchronizing(); },
                         Qt::DirectConnection);
        QObject::connect(&window, &QQuickWindow::frameSwapped, &m_loop, [this] { noteSwapped(); },
                         Qt::DirectConnection);
    }

    // The next frame synchronized from now on is the one waited for.
    void arm() { m_armed = true; }

    // Spins the event loop until the armed frame is swapped; when that happened, or nothing if no
    // such frame came within ten seconds. Either way the watch is disarmed.
    std::optional<Clock::time_point> waitForSwap()
    {
        QTimer limit;
        limit.setSingleShot(true);
        QObject::connect(&limit, &QTimer::timeout, &m_loop, &QEventLoop::quit);
        limit.start(std::chrono::seconds(10));
        m_loop.exec();
        const bool swapped = m_swapped.exchange(false);
        m_armed = false;
        m_synchronized = false;
        if (!swapped)
            return std::nullopt;
        return m_swappedAt;
    }

private:
    void noteSynchronizing()
    {
        if (m_armed)
            m_synchronized = true;
    }

    void noteSwapped()
    {
        if (!m_synchronized)
            return;
        m_swappedAt = Clock::now();
        m_armed = false;
        m_synchronized = false;
        m_swapped = true;
        QMetaObject::invokeMethod(&m_loop, &QEventLoop::quit, Qt::QueuedConnection);
    }

    QEventLoop m_loop;
    std::atomic<bool> m_armed = false;
    std::atomic<bool> m_synchronized = false;
    std::atomic<bool> m_swapped = false;
    Clock::time_point m_swappedAt;
};

inline double seconds(Clock::duration duration)
{
    return std::chrono::duration<double>(duration).count();
}

inline double medianMilliseconds(std::vector<double> times)
{
    if (times.empty())
        return 0;
    const auto middle = times.begin() + std::ptrdiff_t(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle * 1000;
}
