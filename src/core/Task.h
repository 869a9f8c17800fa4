#pragma once

#include <coroutine>
#include <exception>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

// An eagerly started coroutine whose result, or failure, is handed to whoever awaits it.
// The frame owns itself: dropping a Task lets the work run to its end unobserved, which is
// how the views start a model operation and return at once.
template <typename T>
class Task;

namespace TaskDetail {

template <typename T>
using Stored = std::conditional_t<std::is_void_v<T>, std::monostate, T>;

template <typename T>
struct State {
    std::optional<Stored<T>> value;
    std::exception_ptr error;
    std::coroutine_handle<> continuation;
    bool done = false;
};

template <typename T>
struct PromiseBase {
    std::shared_ptr<State<T>> state = std::make_shared<State<T>>();

    std::suspend_never initial_suspend() noexcept { return {}; }

    struct FinalAwaiter {
        bool await_ready() noexcept { return false; }
        template <typename Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> frame) noexcept
        {
            auto state = frame.promise().state;
            state->done = true;
            auto next = std::exchange(state->continuation, {});
            frame.destroy();
            return next ? next : std::noop_coroutine();
        }
        void await_resume() noexcept {}
    };
    FinalAwaiter final_suspend() noexcept { return {}; }

    void unhandled_exception() noexcept { state->error = std::current_exception(); }
};

template <typename T>
struct Promise : PromiseBase<T> {
    Task<T> get_return_object();
    template <typename U>
    void return_value(U &&value) { this->state->value.emplace(std::forward<U>(value)); }
};

template <>
struct Promise<void> : PromiseBase<void> {
    Task<void> get_return_object();
    void return_void() { state->value.emplace(); }
};

} // namespace TaskDetail

template <typename T = void>
class Task {
public:
    using promise_type = TaskDetail::Promise<T>;

    explicit Task(std::shared_ptr<TaskDetail::State<T>> state) : m_state(std::move(state)) {}

    [[nodiscard]] bool isReady() const { return m_state->done; }

    bool await_ready() const noexcept { return m_state->done; }
    void await_suspend(std::coroutine_handle<> awaiting) noexcept { m_state->continuation = awaiting; }
    T await_resume() { return result(); }

    // The outcome of a finished task: its value, or its failure thrown again.
    T result()
    {
        if (m_state->error)
            std::rethrow_exception(m_state->error);
        if constexpr (!std::is_void_v<T>)
            return std::move(*m_state->value);
    }

private:
    std::shared_ptr<TaskDetail::State<T>> m_state;
};

template <typename T>
Task<T> TaskDetail::Promise<T>::get_return_object()
{
    return Task<T>(this->state);
}

inline Task<void> TaskDetail::Promise<void>::get_return_object()
{
    return Task<void>(state);
}
