#pragma once

#include "BoardFilter.h"
#include "BoardMode.h"
#include "Card.h"
#include "CardDragging.h"
#include "CardFaces.h"
#include "CardResolution.h"
#include "FailedSearches.h"
#include "ChecklistProgress.h"
#include "ColumnMove.h"
#include "FinderTagMirror.h"
#include "FolderLook.h"
#include "FolderMatch.h"
#include "FolderPicker.h"
#include "LocalDay.h"
#include "PendingFileDrop.h"
#include "Project.h"
#include "ProjectFilter.h"
#include "Swimlane.h"
#include "Tag.h"
#include "Task.h"
#include "TimerModel.h"
#include "VeltoServices.h"
#include "WorkingFileRead.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QTimeZone>
#include <QStringList>
#include <QUrl>
#include <QVariantList>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>
#include <optional>

// What the board shows, and every operation that changes it. The lists are a copy of the database
// that each reload replaces whole; the operations write to the database and then reload, so the
// board never shows a change the database did not take.
class BoardModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes its one BoardModel")
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString errorMessage READ errorMessageText NOTIFY errorMessageChanged)
    Q_PROPERTY(bool groupByProject READ groupByProject WRITE setGroupByProject NOTIFY groupByProjectChanged)
    Q_PROPERTY(bool sortByPriority READ sortByPriority WRITE setSortByPriority NOTIFY sortByPriorityChanged)
    Q_PROPERTY(QString selectedCardID READ selectedCardIDText WRITE setSelectedCardIDText NOTIFY selectedCardIDChanged)
    // The card the keyboard is on; see BoardModelForKeys.cpp.
    Q_PROPERTY(QString focusedCardID READ focusedCardID WRITE setFocusedCardID NOTIFY focusedCardIDChanged)
    Q_PROPERTY(Mode mode READ qmlMode WRITE setQmlMode NOTIFY modeChanged)
    Q_PROPERTY(bool isManagingTaxonomy READ isManagingTaxonomy WRITE setIsManagingTaxonomy
                   NOTIFY isManagingTaxonomyChanged)
    Q_PROPERTY(FinderTagMirror *tagMirror READ tagMirror CONSTANT)
    // What the views read; see BoardModelForViews.cpp. Statuses and priorities are indices in
    // declaration order, records are maps.
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY filterChanged)
    Q_PROPERTY(QString projectFilterKind READ projectFilterKind NOTIFY filterChanged)
    Q_PROPERTY(QString projectFilterID READ projectFilterID NOTIFY filterChanged)
    Q_PROPERTY(QVariantList selectedPriorities READ selectedPriorities NOTIFY filterChanged)
    Q_PROPERTY(QStringList selectedTagIDs READ selectedTagIDs NOTIFY filterChanged)
    Q_PROPERTY(QVariantList visibleStatuses READ visibleStatusList NOTIFY filterChanged)
    Q_PROPERTY(QVariantList projectList READ projectList NOTIFY projectsChanged)
    Q_PROPERTY(QVariantList tagList READ tagList NOTIFY tagsChanged)
    Q_PROPERTY(QVariantList swimlaneList READ swimlaneList NOTIFY presentationChanged)
    Q_PROPERTY(QVariantList chips READ chipList NOTIFY presentationChanged)
    Q_PROPERTY(QVariantList dueSoonList READ dueSoonList NOTIFY presentationChanged)
    Q_PROPERTY(QString pendingDropTitle READ pendingDropTitle NOTIFY pendingFileDropsChanged)
    Q_PROPERTY(QString pendingDropMessage READ pendingDropMessage CONSTANT)
    // Invalid until the first briefing is copied.
    Q_PROPERTY(QDateTime briefingCopiedAt READ briefingCopiedAtTime NOTIFY briefingCopiedAtChanged)

public:
    using Match = FolderMatch;
    // Shows a folder in the desktop's file manager; false when nothing on the desktop would.
    using Reveal = std::function<Task<bool>(const QUrl &)>;

    enum class Mode { board = int(BoardMode::board), dueSoon = int(BoardMode::dueSoon) };
    Q_ENUM(Mode)

    BoardModel(VeltoServices services, TimerModel *timer, std::shared_ptr<FolderPicker> picker, Reveal reveal,
               QObject *parent = nullptr);
    ~BoardModel() override;

    // State, as the last load published it.
    [[nodiscard]] const QList<Card> &cards() const { return m_cards; }
    [[nodiscard]] const QList<Project> &projects() const { return m_projects; }
    [[nodiscard]] const QList<Tag> &tags() const { return m_tags; }
    [[nodiscard]] const QHash<QString, QSet<QString>> &tagIDsByCard() const { return m_tagIDsByCard; }
    [[nodiscard]] const QHash<QString, ChecklistProgress> &checklistProgress() const { return m_checklistProgress; }
    [[nodiscard]] const QHash<QString, CardResolution> &resolutions() const { return m_resolutions; }
    // The working files of the cards that have one in a folder that is there, by card id.
    [[nodiscard]] const QHash<QString, WorkingFileRead> &workingFiles() const { return m_workingFiles; }
    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    [[nodiscard]] const std::optional<QString> &errorMessage() const { return m_errorMessage; }
    [[nodiscard]] QString errorMessageText() const { return m_errorMessage.value_or(QString()); }
    [[nodiscard]] FinderTagMirror *tagMirror() const { return m_tagMirror.get(); }
    [[nodiscard]] TimerModel *timer() const { return m_timer; }
    // When a briefing was last put on the clipboard; never cleared.
    [[nodiscard]] const std::optional<VeltoDate> &briefingCopiedAt() const { return m_briefingCopiedAt; }
    [[nodiscard]] QDateTime briefingCopiedAtTime() const;

    // What the views set directly; assigning changes nothing else.
    [[nodiscard]] const BoardFilter &filter() const { return m_filter; }
    void setFilter(const BoardFilter &filter);
    [[nodiscard]] bool groupByProject() const { return m_groupByProject; }
    void setGroupByProject(bool group);
    [[nodiscard]] bool sortByPriority() const { return m_sortByPriority; }
    void setSortByPriority(bool sort);
    [[nodiscard]] const std::optional<QString> &selectedCardID() const { return m_selectedCardID; }
    void setSelectedCardID(const std::optional<QString> &id);
    [[nodiscard]] QString selectedCardIDText() const { return m_selectedCardID.value_or(QString()); }
    void setSelectedCardIDText(const QString &id);
    [[nodiscard]] const QList<PendingFileDrop> &pendingFileDrops() const { return m_pendingFileDrops; }
    void setPendingFileDrops(const QList<PendingFileDrop> &drops);
    [[nodiscard]] BoardMode mode() const { return m_mode; }
    void setMode(BoardMode mode);
    [[nodiscard]] bool isManagingTaxonomy() const { return m_isManagingTaxonomy; }
    void setIsManagingTaxonomy(bool managing);

    Q_INVOKABLE void dismissError();

    // For the keyboard; see BoardModelForKeys.cpp.
    [[nodiscard]] const QString &focusedCardID() const { return m_focusedCardID; }
    void setFocusedCardID(const QString &id);
    // The card a step of the arrow keys, Home or End leads to from `cardID` (a CardStep.Step),
    // over the columns as shown and within the card's lane; empty when it leads nowhere.
    Q_INVOKABLE [[nodiscard]] QString neighbourCardID(const QString &cardID, int step) const;
    // Puts the keyboard on the card's cell, wherever the focus is now.
    Q_INVOKABLE void requestCardFocus(const QString &cardID);
    // A sentence from outside the board, such as why folders handed to Velto were refused, shown
    // in the board's banner.
    void showMessage(const QString &message);

    // Derived each time they are read.
    [[nodiscard]] std::optional<Card> selectedCard() const;
    [[nodiscard]] QList<Card> columnCards(CardStatus status, const ProjectFilter &lane) const;
    [[nodiscard]] QList<Swimlane> swimlanes() const;
    // Cards due within seven calendar days of `zone`, or overdue, earliest first.
    [[nodiscard]] QList<Card> dueSoonCards(VeltoDate now, const QTimeZone &zone = QTimeZone::systemTimeZone()) const;
    [[nodiscard]] std::optional<Project> project(const Card &card) const;
    [[nodiscard]] QList<Tag> tags(const Card &card) const;
    [[nodiscard]] std::optional<QUrl> folderURL(const Card &card) const;
    [[nodiscard]] bool needsLocate(const Card &card) const;
    [[nodiscard]] ProjectFilter lane(const Card &card) const;
    // Where a drop shown at `visible` in one column of one lane goes among all cards of the status.
    [[nodiscard]] qint64 absolutePosition(qint64 visible, CardStatus status, const ProjectFilter &lane) const;

    // For the views: each request starts the operation on the card with that id and returns at
    // once; an id with no card does nothing.
    [[nodiscard]] QString searchText() const { return m_filter.searchText; }
    void setSearchText(const QString &text);
    [[nodiscard]] QString projectFilterKind() const;
    [[nodiscard]] QString projectFilterID() const;
    [[nodiscard]] QVariantList selectedPriorities() const;
    [[nodiscard]] QStringList selectedTagIDs() const;
    [[nodiscard]] QVariantList visibleStatusList() const;
    [[nodiscard]] QVariantList projectList() const;
    [[nodiscard]] QVariantList tagList() const;
    [[nodiscard]] QVariantList swimlaneList() const;
    [[nodiscard]] QVariantList chipList() const;
    [[nodiscard]] QVariantList dueSoonList() const;
    // The question put while dropped files wait for their folder; empty while none wait.
    [[nodiscard]] QString pendingDropTitle() const;
    [[nodiscard]] static QString pendingDropMessage();
    // Everything a card face shows of one card.
    [[nodiscard]] QVariantMap face(const Card &card) const;
    Q_INVOKABLE [[nodiscard]] QVariantMap cardFace(const QString &cardID) const;
    // `kind` is "any", "unassigned" or "project"; `projectID` counts only for the last.
    [[nodiscard]] static ProjectFilter laneFilter(const QString &kind, const QString &projectID);

    Q_INVOKABLE void setProjectFilter(const QString &kind, const QString &projectID);
    Q_INVOKABLE void setPriorityShown(int priority, bool shown);
    Q_INVOKABLE void setTagShown(const QString &tagID, bool shown);
    Q_INVOKABLE void setStatusVisible(int status, bool visible);
    Q_INVOKABLE void clearChip(const QString &id);
    Q_INVOKABLE void clearAllFilters();
    Q_INVOKABLE void cancelPendingFileDrops();

    // A reload that also looks again for folders an earlier search did not find.
    Q_INVOKABLE void requestReload();
    Q_INVOKABLE void requestAddFoldersFromPanel();
    Q_INVOKABLE void requestResolvePendingFileDrops();
    Q_INVOKABLE void requestOpenInFinder(const QString &cardID);
    Q_INVOKABLE void requestCopyBriefing(const QString &cardID);
    Q_INVOKABLE void requestLocate(const QString &cardID);
    Q_INVOKABLE void requestRemoveCard(const QString &cardID);
    Q_INVOKABLE void requestToggleTimer(const QString &cardID);
    Q_INVOKABLE void requestMoveInColumn(const QString &cardID, int move);
    Q_INVOKABLE void requestSetStatus(const QString &cardID, int status);
    Q_INVOKABLE void requestSetPriority(const QString &cardID, int priority);
    // An empty `projectID` takes the card out of its project.
    Q_INVOKABLE void requestSetProject(const QString &cardID, const QString &projectID);
    Q_INVOKABLE void requestAddTag(const QString &cardID, const QString &name);
    Q_INVOKABLE void requestRemoveTag(const QString &cardID, const QString &tagID);
    Q_INVOKABLE void requestCreateProject(const QString &name, const QString &color);
    Q_INVOKABLE void requestUpdateProject(const QString &id, const QString &name, const QString &color);
    Q_INVOKABLE void requestDeleteProject(const QString &id);
    Q_INVOKABLE void requestRecolorTag(const QString &id, const QString &color);
    Q_INVOKABLE void requestDeleteTag(const QString &id);
    // For the detail pane; see BoardModelForDetail.cpp. The card as the pane edits it: the face
    // and the stored title and goal, empty where absent.
    Q_INVOKABLE [[nodiscard]] QVariantMap cardDetail(const QString &cardID) const;
    // An empty or blank text clears the title or the goal; an invalid date clears the deadline.
    Q_INVOKABLE void requestSetTitle(const QString &cardID, const QString &title);
    Q_INVOKABLE void requestSetGoal(const QString &cardID, const QString &goal);
    Q_INVOKABLE void requestSetDeadline(const QString &cardID, const QDateTime &deadline);
    // A card dragged on this board and let go at a place of a column.
    Q_INVOKABLE void requestCardDrop(const QString &cardID, int status, int position, const QString &laneKind,
                                     const QString &laneProjectID);
    // Another program's drop on a column: its card payload as it came, whether it offered one at
    // all, and its file URLs.
    Q_INVOKABLE void requestDrop(const QByteArray &cardData, bool offersCard, const QList<QUrl> &urls, int status,
                                 int position, const QString &laneKind, const QString &laneProjectID);

    // Runs after every reload asked for before it; never fails, a failure lands in errorMessage.
    Task<> reload();

    // Folders in and out.
    Task<> addFoldersFromPanel();
    Task<> addFolders(QList<QUrl> urls);
    Task<> addDropped(QList<QUrl> urls);
    Task<> resolvePendingFileDrops();
    Task<> locate(Card card);
    Task<> openInFinder(Card card);
    Task<> removeCard(Card card);
    // Puts the card's briefing on the clipboard (see BoardBriefing.cpp).
    Task<> copyBriefing(Card card);

    // Moves and edits.
    Task<> moveCard(QString id, CardStatus status, qint64 position);
    Task<> moveInColumn(Card card, ColumnMove move);
    Task<> setStatus(CardStatus status, Card card);
    Task<> acceptDrop(DropContents contents, CardStatus status, qint64 visible, ProjectFilter lane);
    Task<> setPriority(Priority priority, Card card);
    Task<> setProject(std::optional<QString> projectID, QString cardID);
    Task<> setDeadline(std::optional<VeltoDate> deadline, Card card);
    Task<> setTitle(std::optional<QString> title, Card card);
    Task<> setGoal(std::optional<QString> goal, Card card);
    Task<> createProject(QString name, QString color);
    Task<> updateProject(Project project);
    Task<> deleteProject(QString id);
    Task<> addTag(QString name, Card card);
    Task<> removeTag(QString tagID, QString cardID);
    Task<> recolorTag(QString tagID, QString color);
    Task<> deleteTag(QString id);
    Task<> setTagMirrorEnabled(bool enabled);
    // Starts the switch-over of the tag mirror; tagMirrorSwitched tells when it is over.
    Q_INVOKABLE void requestSetTagMirrorEnabled(bool enabled);

signals:
    void tagMirrorSwitched();
    void cardsChanged();
    void projectsChanged();
    void tagsChanged();
    void tagIDsByCardChanged();
    void checklistProgressChanged();
    void resolutionsChanged();
    void workingFilesChanged();
    void isLoadingChanged();
    void errorMessageChanged();
    void filterChanged();
    void groupByProjectChanged();
    void sortByPriorityChanged();
    void selectedCardIDChanged();
    void focusedCardIDChanged();
    void cardFocusRequested(const QString &cardID);
    void pendingFileDropsChanged();
    void modeChanged();
    void isManagingTaxonomyChanged();
    void briefingCopiedAtChanged();
    // Anything the columns, lanes, chips or the due-soon list are derived from has changed.
    void presentationChanged();

private:
    // One status's cards in the lane, in their order: the board's filter and sort when `filtered`,
    // else all of them by their stored order.
    [[nodiscard]] QList<const Card *> orderedColumn(CardStatus status, const ProjectFilter &lane,
                                                    bool filtered) const;
    struct LoadChain;

    static Task<> runAfter(QPointer<BoardModel> model, std::shared_ptr<LoadChain> previous,
                           std::shared_ptr<LoadChain> current);
    Task<> load();
    Task<> switchTagMirror(bool enabled);
    Task<bool> loadSources(const QPointer<BoardModel> &self);

    // Waits for a write, then reloads if it worked; a failure is reported and nothing reloads.
    Task<> reloadAfter(Task<> write);
    Task<> attachFiles(QStringList names, QUrl folder, QString cardID);
    Task<> addOneFolder(QUrl url, QStringList &failures, std::optional<QString> &firstCardID, bool &needsReload);
    Task<> insertNewCard(const QUrl &url, std::optional<QString> &firstCardID);
    [[nodiscard]] std::optional<Card> cardAt(const QUrl &folder) const;
    [[nodiscard]] std::optional<Card> cardWithID(const QString &id) const;

    void setCards(const QList<Card> &cards);
    void setProjects(const QList<Project> &projects);
    void setTags(const QList<Tag> &tags);
    void setTagIDsByCard(const QHash<QString, QSet<QString>> &links);
    void setChecklistProgress(const QHash<QString, ChecklistProgress> &progress);
    void setResolutions(const QHash<QString, CardResolution> &resolutions);
    void setWorkingFiles(const QHash<QString, WorkingFileRead> &files);
    void setIsLoading(bool loading);
    void setErrorMessage(const std::optional<QString> &message);
    void setBriefingCopiedAt(const std::optional<VeltoDate> &copiedAt);
    void reportFailure(const std::exception &failure);
    // Resolves the card's folder off this thread and keeps the verdict; absent when the board
    // went away meanwhile.
    Task<std::optional<CardResolution>> resolveAndKeep(Card card);

    [[nodiscard]] Mode qmlMode() const { return Mode(int(m_mode)); }
    void setQmlMode(Mode mode) { setMode(BoardMode(int(mode))); }

    VeltoServices m_services;
    QPointer<TimerModel> m_timer;
    std::unique_ptr<FinderTagMirror> m_tagMirror;
    std::shared_ptr<FolderPicker> m_picker;
    Reveal m_reveal;

    QList<Card> m_cards;
    QList<Project> m_projects;
    QList<Tag> m_tags;
    QHash<QString, QSet<QString>> m_tagIDsByCard;
    QHash<QString, ChecklistProgress> m_checklistProgress;
    QHash<QString, CardResolution> m_resolutions;
    QHash<QString, WorkingFileRead> m_workingFiles;
    // The card folders last seen without a working file, which the next reload need not look into.
    QHash<QString, FolderLook::WithoutFile> m_foldersWithoutFile;
    // The card folders last confirmed where their bookmarks lead, which the next reload confirms
    // there again at one system call each while the mounts stay as they were, and at none while
    // the folder watch notes nothing of them.
    QHash<QString, CardResolution::Confirmed> m_confirmedFolders;
    std::shared_ptr<MountWatch> m_mountWatch = std::make_shared<MountWatch>();
    std::shared_ptr<FolderWatch> m_folderWatch = std::make_shared<FolderWatch>();
    // Built as the views ask for them; kept for the cards on the board.
    mutable CardFaces m_faces;
    bool m_isLoading = false;
    std::optional<QString> m_errorMessage;
    BoardFilter m_filter;
    bool m_groupByProject = false;
    bool m_sortByPriority = false;
    std::optional<QString> m_selectedCardID;
    QString m_focusedCardID;
    QList<PendingFileDrop> m_pendingFileDrops;
    std::shared_ptr<LoadChain> m_loadChain;
    // Folders searched for in vain; a reload does not search for them again.
    std::shared_ptr<FailedSearches> m_failedSearches = std::make_shared<FailedSearches>();
    BoardMode m_mode = BoardMode::board;
    bool m_isManagingTaxonomy = false;
    LocalDay m_day;
    std::optional<VeltoDate> m_briefingCopiedAt;
};
