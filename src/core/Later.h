#pragma once

#include <QCoreApplication>
#include <QMetaObject>

#include <coroutine>
#include <memory>
#include <optional>
#include <utility>

// A value that a callback delivers later - a reply, a signal, a dialog's answer - awaited by one
// coroutine. Copies share the one value, so the callback keeps its own copy while the coroutine
// awaits another; only the first delivery counts. The coroutine resumes from the event loop, never
// inside the callback, so it may delete whatever called back.
template <typename T>
class Later {
public:
    void deliver(T value) const
    {
        if (m_state->value)
            return;
        m_state->value.emplace(std::move(value));
        if (auto waiting = std::exchange(m_state->waiting, {}))
            QMetaObject::invokeMethod(
                QCoreApplication::instance(), [waiting] { waiting.resume(); }, Qt::QueuedConnection);
    }

    [[nodiscard]] bool isDelivered() const { return m_state->value.has_value(); }

    bool await_ready() const noexcept { return m_state->value.has_value(); }
    void await_suspend(std::coroutine_handle<> awaiting) const noexcept { m_state->waiting = awaiting; }
    T await_resume() const { return *m_state->value; }

private:
    struct State {
        std::optional<T> value;
        std::coroutine_handle<> waiting;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};
