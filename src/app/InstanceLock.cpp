#include "InstanceLock.h"

#include "InstanceLockError.h"
#include "ReadOnlyDatabaseError.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace {

QString lastSystemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

} // namespace

std::optional<InstanceLock> InstanceLock::take(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0) {
        // A folder that refuses a new file is said to be read-only, as it would be by the database
        // that cannot make its journal there: the user has one thing to fix, whichever meets it first.
        if (errno == EACCES || errno == EROFS)
            throw ReadOnlyDatabaseError(ReadOnlyDatabaseError::FolderReadOnly{QFileInfo(path).absolutePath()});
        throw InstanceLockError(InstanceLockError::Unusable{path, lastSystemError()});
    }
    // Held per open file, so a second open in this very process is refused like another process.
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        const int failure = errno;
        ::close(descriptor);
        if (failure == EWOULDBLOCK)
            return std::nullopt;
        errno = failure;
        throw InstanceLockError(InstanceLockError::Unusable{path, lastSystemError()});
    }
    return InstanceLock(path, descriptor);
}

InstanceLock::InstanceLock(QString path, int descriptor) : m_path(std::move(path)), m_descriptor(descriptor) {}

InstanceLock::InstanceLock(InstanceLock &&other) noexcept
    : m_path(std::move(other.m_path)), m_descriptor(std::exchange(other.m_descriptor, -1))
{
}

InstanceLock &InstanceLock::operator=(InstanceLock &&other) noexcept
{
    if (this != &other) {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        m_path = std::move(other.m_path);
        m_descriptor = std::exchange(other.m_descriptor, -1);
    }
    return *this;
}

InstanceLock::~InstanceLock()
{
    // Closing the last descriptor of the open file releases the lock.
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}
