#pragma once

#include <QByteArray>
#include <QMutex>
#include <QSet>

// The bookmarks whose folder a search looked for and did not find. A folder gone for good then
// costs its search once, not at every load; whoever learns that the answer may have changed (the
// user asking again, the user coming back to the application) clears it. Shared between the
// board and the threads that resolve for it.
class FailedSearches {
public:
    [[nodiscard]] bool contains(const QByteArray &bookmark) const;
    void insert(const QByteArray &bookmark);
    void clear();

private:
    mutable QMutex m_mutex;
    QSet<QByteArray> m_bookmarks;
};
