#include "MountWatch.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// When a UUID link was last added to or removed from /dev/disk/by-uuid; -1 where there is none.
qint64 diskLinksModified()
{
    struct stat status {};
    if (stat("/dev/disk/by-uuid", &status) != 0)
        return -1;
    return qint64(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec;
}

} // namespace

MountWatch::MountWatch() : m_mountInfo(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)) {}

MountWatch::~MountWatch()
{
    if (m_mountInfo >= 0)
        close(m_mountInfo);
}

MountWatch::Reading MountWatch::current()
{
    const QMutexLocker lock(&m_mutex);
    // Asked before the table is read, so that a change while it is read shows at the next reading.
    const bool changed = hasChanged();
    if (changed || !m_reading)
        m_reading = Reading{MountTable::read(), m_reading ? m_reading->generation + 1 : 1};
    return *m_reading;
}

bool MountWatch::hasChanged()
{
    const qint64 links = diskLinksModified();
    const bool relinked = links != std::exchange(m_diskLinksModified, links);
    if (m_mountInfo < 0)
        return true;
    // The kernel raises the flag once per change and lowers it as it reports it.
    pollfd watch{m_mountInfo, POLLPRI, 0};
    const bool remounted = poll(&watch, 1, 0) > 0 && (watch.revents & (POLLPRI | POLLERR)) != 0;
    return remounted || relinked;
}
