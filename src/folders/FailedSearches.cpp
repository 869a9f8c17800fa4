#include "FailedSearches.h"

#include <QMutexLocker>

bool FailedSearches::contains(const QByteArray &bookmark) const
{
    const QMutexLocker lock(&m_mutex);
    return m_bookmarks.contains(bookmark);
}

void FailedSearches::insert(const QByteArray &bookmark)
{
    const QMutexLocker lock(&m_mutex);
    m_bookmarks.insert(bookmark);
}

void FailedSearches::clear()
{
    const QMutexLocker lock(&m_mutex);
    m_bookmarks.clear();
}
