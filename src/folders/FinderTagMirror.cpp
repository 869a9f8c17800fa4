#include "FinderTagMirror.h"

#include "AssignIfChanged.h"
#include "FolderTagAttribute.h"
#include "SecurityScopedBookmark.h"

#include <QDir>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

const QString mirrorKey = u"mirrorStatusToFinderTags"_s;
const QString badgesKey = u"showBadgesInFinder"_s;

// The settings file that the application and the processes beside it share; absent when the
// container names no file or the file cannot be read.
std::unique_ptr<QSettings> openSharedSettings(const AppGroupContainer &container)
{
    if (container.identifier.isEmpty() || container.path.isEmpty())
        return nullptr;
    auto settings = std::make_unique<QSettings>(QDir(container.path).filePath(container.identifier + u".ini"_s),
                                                QSettings::IniFormat);
    if (settings->status() != QSettings::NoError)
        return nullptr;
    return settings;
}

// Badges are on unless a stored false says otherwise: a value of any other kind counts as unset.
bool readsAsShowingBadges(const QVariant &stored)
{
    return stored.toString() != u"false"_s;
}

// Where the card's folder is, if it can be tagged now. A folder out of reach keeps its tag and
// its record until a later pass finds it.
std::optional<QUrl> reachableFolder(const Card &card, const QHash<QString, CardResolution> &resolutions)
{
    const auto resolution = resolutions.constFind(card.id);
    if (resolution == resolutions.cend() || resolution->availability != CardResolution::Availability::available)
        return std::nullopt;
    return resolution->locationURL;
}

void applyTagWithAccess(const std::optional<QString> &desired, const std::optional<QString> &previous,
                        const QUrl &folder)
{
    const SecurityScopedBookmark::ScopedAccess access(folder);
    FolderTagAttribute::applyTag(desired, previous, folder);
}

} // namespace

FinderTagMirror::FinderTagMirror(VeltoServices services, QObject *parent)
    : QObject(parent), m_services(std::move(services)), m_settings(openSharedSettings(m_services.container))
{
    if (m_settings) {
        m_isEnabled = m_settings->value(mirrorKey).toBool();
        m_showsBadgesInFinder = readsAsShowingBadges(m_settings->value(badgesKey));
    }
}

QString FinderTagMirror::wantedTag(CardStatus status)
{
    // "Waiting" alone: the column's full label would crowd the file manager's tag list.
    switch (status) {
    case CardStatus::notStarted: return u"Velto: Not Started"_s;
    case CardStatus::inProgress: return u"Velto: In Progress"_s;
    case CardStatus::waiting: return u"Velto: Waiting"_s;
    case CardStatus::complete: return u"Velto: Complete"_s;
    }
    Q_UNREACHABLE();
}

void FinderTagMirror::setShowsBadgesInFinder(bool shows)
{
    const bool changed = shows != m_showsBadgesInFinder;
    m_showsBadgesInFinder = shows;
    if (m_settings) {
        m_settings->setValue(badgesKey, shows);
        m_settings->sync();
    }
    // Even with nowhere to store it, or nothing changed, the other processes are told to look
    // again: the badge extension redraws on this signal alone.
    m_services.notifier.post();
    if (changed)
        emit showsBadgesInFinderChanged();
}

Task<void> FinderTagMirror::setEnabled(bool enabled, QList<Card> cards, QHash<QString, CardResolution> resolutions)
{
    if (m_settings) {
        m_settings->setValue(mirrorKey, enabled);
        m_settings->sync();
    }
    setIsEnabled(enabled);
    co_await sync(std::move(cards), std::move(resolutions), true);
}

Task<bool> FinderTagMirror::sync(QList<Card> cards, QHash<QString, CardResolution> resolutions, bool force)
{
    if (!m_isEnabled && !force)
        co_return false;
    const bool enabled = m_isEnabled;
    QStringList failures;
    bool changed = false;
    for (const Card &card : std::as_const(cards)) {
        const auto folder = reachableFolder(card, resolutions);
        if (!folder)
            continue;
        const std::optional<QString> desired = enabled ? std::optional(wantedTag(card.status)) : std::nullopt;
        // A board that has not changed costs no file-system access at all.
        if (card.finderTag == desired)
            continue;
        try {
            // The folder first: if it fails, the record still says what is really on the folder.
            applyTagWithAccess(desired, card.finderTag, *folder);
            co_await m_services.database->setFinderTag(desired, card.id);
            changed = true;
        } catch (const VeltoError &error) {
            failures.append(card.displayName + u": "_s + error.text());
        }
    }
    setLastError(failures.isEmpty() ? std::nullopt
                                    : std::optional(u"Some folders could not be tagged:\n"_s + failures.join(u'\n')));
    co_return changed;
}

void FinderTagMirror::setIsEnabled(bool enabled)
{
    if (assignIfChanged(m_isEnabled, enabled))
        emit isEnabledChanged();
}

void FinderTagMirror::setLastError(std::optional<QString> text)
{
    if (assignIfChanged(m_lastError, std::move(text)))
        emit lastErrorChanged();
}
