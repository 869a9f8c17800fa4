#pragma once

#include "Task.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <utility>

// Runs the event loop until the task has finished, then gives its value or throws its failure.
template <typename T>
T await(Task<T> task)
{
    while (!task.isReady())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return task.result();
}
