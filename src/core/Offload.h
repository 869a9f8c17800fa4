#pragma once

#include <QCoreApplication>
#include <QMetaObject>
#include <QThreadPool>

#include "Task.h"

#include <coroutine>
#include <exception>
#include <functional>
#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

// Awaitable that runs a piece of work elsewhere (a worker thread, a thread pool) and resumes
// the awaiting coroutine on the application's thread through its event loop, carrying the
// work's result or its exception.
template <typename Result>
class Offload {
public:
    using Dispatch = std::function<void(std::function<void()>)>;

    Offload(Dispatch dispatch, std::function<Result()> work)
        : m_dispatch(std::move(dispatch)), m_work(std::move(work)) {}

    bool await_ready() const noexcept { return false; }

    void await_suspend(std::coroutine_handle<> awaiting)
    {
        m_dispatch([this, awaiting] {
            try {
                if constexpr (std::is_void_v<Result>) {
                    m_work();
                    m_value.emplace();
                } else {
                    m_value.emplace(m_work());
                }
            } catch (...) {
                m_error = std::current_exception();
            }
            QMetaObject::invokeMethod(
                QCoreApplication::instance(), [awaiting] { awaiting.resume(); }, Qt::QueuedConnection);
        });
    }

    Result await_resume()
    {
        if (m_error)
            std::rethrow_exception(m_error);
        if constexpr (!std::is_void_v<Result>)
            return std::move(*m_value);
    }

private:
    using Stored = std::conditional_t<std::is_void_v<Result>, std::monostate, Result>;

    Dispatch m_dispatch;
    std::function<Result()> m_work;
    std::optional<Stored> m_value;
    std::exception_ptr m_error;
};

// A task that awaits one offloaded piece of work. The awaitable is a parameter, so it lives in
// the frame: gcc 12 mishandles lambdas built inside a co_await operand.
template <typename Result>
Task<Result> awaitOffload(Offload<Result> offload)
{
    co_return co_await offload;
}

// Bulk file-system work (resolving every card, listing a folder) goes to the global pool.
template <typename Work>
auto onThreadPool(Work work) -> Task<std::invoke_result_t<Work>>
{
    return awaitOffload(Offload<std::invoke_result_t<Work>>(
        [](std::function<void()> job) { QThreadPool::globalInstance()->start(std::move(job)); }, std::move(work)));
}
