#pragma once

#include "VeltoDate.h"

#include <chrono>
#include <functional>

// The two clocks the timer reads: the wall clock that dates sessions and measures them, and a
// sleep that keeps counting while the machine is suspended, so that the first tick after a wake
// comes at once. Tests replace both and never wait.
struct TimerClock {
    using Wake = std::function<void()>;
    using Cancel = std::function<void()>;

    std::function<VeltoDate()> now;
    // Calls `wake` once, on the calling thread, after `duration`; the returned function makes a
    // wake that hasn't happened yet never happen.
    std::function<Cancel(std::chrono::milliseconds duration, Wake wake)> sleep;

    [[nodiscard]] static TimerClock system();
};
