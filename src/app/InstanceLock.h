#pragma once

#include <QString>

#include <optional>

// The exclusive hold on the container that makes one process the only writer of its database. The
// system lets go of it when the process ends, however it ends.
class InstanceLock {
public:
    // Absent when another holder has it, in this process or another. Throws InstanceLockError when
    // the file can't be opened or locked at all.
    [[nodiscard]] static std::optional<InstanceLock> take(const QString &path);

    InstanceLock(InstanceLock &&other) noexcept;
    InstanceLock &operator=(InstanceLock &&other) noexcept;
    InstanceLock(const InstanceLock &) = delete;
    InstanceLock &operator=(const InstanceLock &) = delete;
    ~InstanceLock();

    [[nodiscard]] const QString &path() const { return m_path; }

private:
    InstanceLock(QString path, int descriptor);

    QString m_path;
    int m_descriptor = -1;
};
