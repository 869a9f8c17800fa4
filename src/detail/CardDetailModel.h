#pragma once

#include "Card.h"
#include "ChecklistItem.h"
#include "ChecklistListModel.h"
#include "FolderEntry.h"
#include "FolderEntryListModel.h"
#include "SecurityScopedBookmark.h"
#include "SessionListModel.h"
#include "Task.h"
#include "TimeSession.h"
#include "VeltoDate.h"
#include "VeltoServices.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <exception>
#include <memory>
#include <optional>

class AppModel;

// What the detail pane shows of one card: a fresh copy of it, its folder's top level with an open
// scope on the folder, its checklist, its tracked sessions, the count of files new since it was
// last opened, and one line of error. The pane makes one per card on show and drops it with the
// card. It writes only checklist rows, sessions and the card's count of files, and never anything
// inside the folder.
class CardDetailModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_MOC_INCLUDE("AppModel.h")
    // The pane hands over the application; the model takes its services and finds cards on its
    // board by id.
    Q_PROPERTY(AppModel *app READ app WRITE setApp NOTIFY appChanged)
    Q_PROPERTY(QString cardID READ cardID NOTIFY cardChanged)
    Q_PROPERTY(QUrl folderURL READ folderURLValue NOTIFY folderURLChanged)
    Q_PROPERTY(FolderEntryListModel *entries READ entryList CONSTANT)
    Q_PROPERTY(ChecklistListModel *items READ itemList CONSTANT)
    Q_PROPERTY(int itemCount READ itemCount NOTIFY itemsChanged)
    Q_PROPERTY(int doneItemCount READ doneItemCount NOTIFY itemsChanged)
    Q_PROPERTY(QString errorMessage READ errorMessageText NOTIFY errorMessageChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(qint64 newFileCount READ newFileCount NOTIFY newFileCountChanged)
    Q_PROPERTY(SessionListModel *sessions READ sessionList CONSTANT)
    Q_PROPERTY(double totalTrackedSeconds READ totalTrackedSeconds NOTIFY sessionsChanged)
    Q_PROPERTY(QString selectedItemID READ selectedItemIDText WRITE setSelectedItemIDText NOTIFY selectedItemIDChanged)
    // Empty while no preview is asked for; the pane clears it when the preview closes.
    Q_PROPERTY(QUrl previewURL READ previewURLValue WRITE setPreviewURLValue NOTIFY previewURLChanged)
    Q_PROPERTY(bool didFindFolderUnreadable READ didFindFolderUnreadable NOTIFY didFindFolderUnreadableChanged)

public:
    // For the pane, which sets `app` before anything else.
    explicit CardDetailModel(QObject *parent = nullptr);
    CardDetailModel(VeltoServices services, QObject *parent = nullptr);
    ~CardDetailModel() override;

    [[nodiscard]] AppModel *app() const;
    void setApp(AppModel *app);

    [[nodiscard]] const std::optional<Card> &card() const { return m_card; }
    [[nodiscard]] QString cardID() const { return m_card ? m_card->id : QString(); }
    [[nodiscard]] const std::optional<QUrl> &folderURL() const { return m_folderURL; }
    [[nodiscard]] QUrl folderURLValue() const { return m_folderURL.value_or(QUrl()); }
    [[nodiscard]] const QList<FolderEntry> &entries() const { return m_entries->entries(); }
    [[nodiscard]] FolderEntryListModel *entryList() const { return m_entries; }
    [[nodiscard]] const QList<ChecklistItem> &items() const { return m_items->items(); }
    [[nodiscard]] ChecklistListModel *itemList() const { return m_items; }
    [[nodiscard]] int itemCount() const { return int(items().size()); }
    [[nodiscard]] int doneItemCount() const;
    [[nodiscard]] const std::optional<QString> &errorMessage() const { return m_errorMessage; }
    [[nodiscard]] QString errorMessageText() const { return m_errorMessage.value_or(QString()); }
    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    [[nodiscard]] qint64 newFileCount() const { return m_newFileCount; }
    [[nodiscard]] const QList<TimeSession> &sessions() const { return m_sessions->sessions(); }
    [[nodiscard]] SessionListModel *sessionList() const { return m_sessions; }
    [[nodiscard]] const std::optional<QString> &selectedItemID() const { return m_selectedItemID; }
    void setSelectedItemID(const std::optional<QString> &id);
    [[nodiscard]] QString selectedItemIDText() const { return m_selectedItemID.value_or(QString()); }
    void setSelectedItemIDText(const QString &id);
    [[nodiscard]] const std::optional<QUrl> &previewURL() const { return m_previewURL; }
    void setPreviewURL(const std::optional<QUrl> &url);
    [[nodiscard]] QUrl previewURLValue() const { return m_previewURL.value_or(QUrl()); }
    void setPreviewURLValue(const QUrl &url);
    [[nodiscard]] bool didFindFolderUnreadable() const { return m_didFindFolderUnreadable; }

    // The sentence for a folder whose listing, or the storing of its count, failed.
    [[nodiscard]] static QString folderReadMessage(const std::exception &failure, const QUrl &url);

    // Operations; none of them fails towards its caller, every failure lands in errorMessage.
    Task<> load(Card card);
    // Marks each checklist item whose file is gone as missing, and one that came back as not.
    Task<> scanChecklist();
    // Whether an item already carries the entry's name, wherever its file is.
    [[nodiscard]] bool hasChecklistItem(const FolderEntry &entry) const;
    // Turns a file of the folder into a checklist item; a folder, or a name already on the
    // checklist or on its way there, is left alone.
    Task<> promote(FolderEntry entry);
    Task<> toggleItem(ChecklistItem item);
    Task<> removeItem(ChecklistItem item);
    Q_INVOKABLE void previewSelectedItem();
    void previewItem(const ChecklistItem &item);
    // Open the item's file in its application, or show it in the file manager; an item whose
    // bookmark leads nowhere does nothing.
    static void openItem(const ChecklistItem &item);
    static void revealItem(const ChecklistItem &item);
    // Seconds of all ended sessions; a running one adds nothing.
    [[nodiscard]] double totalTrackedSeconds() const;
    Task<> addSession(VeltoDate start, VeltoDate end);
    Task<> updateSession(TimeSession session);
    Task<> deleteSession(TimeSession session);
    Q_INVOKABLE void clearError();

    // For the pane: each starts the operation on the card, item, entry or session with that id
    // or location and returns at once; one that is not there does nothing.
    Q_INVOKABLE void requestLoad(const QString &cardID);
    Q_INVOKABLE void requestPromote(const QUrl &entryURL);
    Q_INVOKABLE void requestToggleItem(const QString &itemID);
    Q_INVOKABLE void requestRemoveItem(const QString &itemID);
    Q_INVOKABLE void requestPreviewItem(const QString &itemID);
    Q_INVOKABLE void requestOpenItem(const QString &itemID);
    Q_INVOKABLE void requestRevealItem(const QString &itemID);
    Q_INVOKABLE void requestAddSession(const QDateTime &start, const QDateTime &end);
    Q_INVOKABLE void requestUpdateSession(const QString &sessionID, const QDateTime &start, const QDateTime &end);
    Q_INVOKABLE void requestDeleteSession(const QString &sessionID);

signals:
    void appChanged();
    void cardChanged();
    void folderURLChanged();
    void entriesChanged();
    void itemsChanged();
    void errorMessageChanged();
    void isLoadingChanged();
    void newFileCountChanged();
    void sessionsChanged();
    void selectedItemIDChanged();
    void previewURLChanged();
    void didFindFolderUnreadableChanged();

private:
    Task<> readChecklistAndSessions(QString cardID);
    Task<> listFolder(QUrl url, Card fresh);
    // Read the card's list again; a failure lands in errorMessage.
    Task<> rereadItems();
    Task<> rereadSessions();
    [[nodiscard]] std::optional<ChecklistItem> itemWithID(const QString &id) const;
    [[nodiscard]] std::optional<TimeSession> sessionWithID(const QString &id) const;

    void setCard(const std::optional<Card> &card);
    void setFolderURL(const std::optional<QUrl> &url);
    void setEntries(const QList<FolderEntry> &entries);
    void setItems(const QList<ChecklistItem> &items);
    void setErrorMessage(const std::optional<QString> &message);
    void setIsLoading(bool loading);
    void setNewFileCount(qint64 count);
    void setSessions(const QList<TimeSession> &sessions);
    void setDidFindFolderUnreadable(bool unreadable);
    void reportFailure(const std::exception &failure);

    std::optional<VeltoServices> m_services;
    QPointer<AppModel> m_app;
    std::optional<Card> m_card;
    std::optional<QUrl> m_folderURL;
    FolderEntryListModel *m_entries;
    ChecklistListModel *m_items;
    std::optional<QString> m_errorMessage;
    bool m_isLoading = false;
    qint64 m_newFileCount = 0;
    SessionListModel *m_sessions;
    std::optional<QString> m_selectedItemID;
    std::optional<QUrl> m_previewURL;
    std::unique_ptr<SecurityScopedBookmark::ScopedAccess> m_access;
    bool m_didFindFolderUnreadable = false;
    // Names being promoted right now, so that a second click before the first is stored adds
    // nothing.
    QSet<QString> m_namesBeingPromoted;
};
