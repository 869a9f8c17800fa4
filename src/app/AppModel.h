#pragma once

#include "AnalyticsModel.h"
#include "AppGroupSources.h"
#include "BoardModel.h"
#include "DiagnosticsModel.h"
#include "DesktopNotification.h"
#include "FocusSettings.h"
#include "FolderHandoff.h"
#include "FolderPicker.h"
#include "InstallLocation.h"
#include "InstanceLock.h"
#include "Task.h"
#include "TimerModel.h"
#include "VeltoServices.h"

#include <QObject>
#include <QPointer>
#include <QSettings>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

// The root of the running system: it finds the shared container, opens and migrates the database,
// and then holds every long-lived model. Until that has worked, the window shows a waiting or a
// failure screen, and no model exists.
class ApplicationBusService;

class AppModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes its one AppModel")
    Q_PROPERTY(StartupKind startupKind READ startupKind NOTIFY startupChanged)
    Q_PROPERTY(QString failureMessage READ failureMessage NOTIFY startupChanged)
    Q_PROPERTY(TimerModel *timer READ timer NOTIFY timerChanged)
    Q_PROPERTY(FocusSettings *focus READ focus CONSTANT)
    Q_PROPERTY(BoardModel *board READ board NOTIFY boardChanged)
    Q_PROPERTY(InstallLocation::Verdict installLocation READ installLocation CONSTANT)
    Q_PROPERTY(QString dataFolder READ dataFolder CONSTANT)
    Q_PROPERTY(DiagnosticsModel *diagnostics READ diagnostics NOTIFY diagnosticsChanged)
    Q_PROPERTY(AnalyticsModel *analytics READ analytics NOTIFY analyticsChanged)

public:
    enum class StartupKind { Starting, Failed, Ready };
    Q_ENUM(StartupKind)

    struct Startup {
        StartupKind kind = StartupKind::Starting;
        QString message; // the failure's text; empty unless failed

        static Startup starting() { return {}; }
        static Startup failed(const QString &text) { return {StartupKind::Failed, text}; }
        static Startup ready() { return {StartupKind::Ready, {}}; }
        bool operator==(const Startup &) const = default;
    };

    // `defaults` is the application's standard settings store; absent means the user's own. Without
    // a `picker`, the board asks through the desktop's folder chooser.
    explicit AppModel(AppGroupSources sources = AppGroupSources::ofThisProcess(),
                      std::shared_ptr<QSettings> defaults = nullptr, std::shared_ptr<FolderPicker> picker = nullptr,
                      QObject *parent = nullptr);
    ~AppModel() override;

    [[nodiscard]] const Startup &startup() const { return m_startup; }
    [[nodiscard]] StartupKind startupKind() const { return m_startup.kind; }
    [[nodiscard]] QString failureMessage() const { return m_startup.message; }
    [[nodiscard]] const std::optional<VeltoServices> &services() const { return m_services; }
    [[nodiscard]] TimerModel *timer() const { return m_timer.get(); }
    [[nodiscard]] BoardModel *board() const { return m_board.get(); }
    [[nodiscard]] DiagnosticsModel *diagnostics() const { return m_diagnostics.get(); }
    [[nodiscard]] AnalyticsModel *analytics() const { return m_analytics.get(); }
    // Made once with the model and never replaced, so it outlives every retry.
    [[nodiscard]] FocusSettings *focus() const { return m_focus.get(); }
    // Where the database lives, and whether what is saved there lasts; both taken once, at launch.
    [[nodiscard]] QString dataFolder() const { return m_dataFolder; }
    [[nodiscard]] InstallLocation::Verdict installLocation() const { return m_installLocation; }
    // Shows the data folder in the file manager, or at least the folder that holds it.
    Q_INVOKABLE void revealDataFolder() const;

    // Never fails towards the caller: every failure lands in startup. Idempotent once it worked.
    Task<> start();
    // Drops whatever a failed start left, then starts again.
    Task<> retry();

    struct ContainerClaim {
        bool heldElsewhere = false;
        QString identifier; // the configured one; empty when none is
    };

    // Takes the lock that makes this process the only writer of the container's database, before
    // anything opens it; start() takes it too when this was not called. Another Velto holding it is
    // the one failure told here; any other is left for start() to report.
    [[nodiscard]] ContainerClaim claimContainer();

    // Folders handed in from outside, such as the command line or a second launch. They are added
    // once start-up has loaded the board, so that a folder already on it is recognised, and why
    // nothing could be taken shows in the board's banner, or as a desktop notification when one
    // was given and no window of Velto is active; a failed start drops both.
    void handOver(const FolderHandoff &handoff);
    void setDesktopNotification(DesktopNotification notification) { m_notification = std::move(notification); }
    // URIs from a second launch or a launcher, read as the command line is.
    void handOverURIs(const QStringList &uris);
    // The launcher's "Add to Velto Board", or `velto --add-folder`: the folder chooser, once the
    // board has loaded.
    void requestAddFolders();
    // A launcher's action by the name the desktop entry gives it; the window comes forward for
    // any name, known or not.
    void runAction(const QString &name);
    static QString addFolderAction() { return QStringLiteral("add-folder"); }
    // Answers a second launch or a launcher, as the running Velto does.
    void answerLaunches(ApplicationBusService &launches);

    // What the window calls; each starts the task and returns at once.
    Q_INVOKABLE void requestStart();
    Q_INVOKABLE void requestRetry();

signals:
    void startupChanged();
    void servicesChanged();
    void timerChanged();
    void boardChanged();
    void diagnosticsChanged();
    void analyticsChanged();
    // Something outside asked for Velto's window: a second launch, or a launcher.
    void activationRequested();

private:
    void setStartup(const Startup &startup);
    void setServices(std::optional<VeltoServices> services);
    void setTimer(std::unique_ptr<TimerModel> timer);
    void setBoard(std::unique_ptr<BoardModel> board);
    void setDiagnostics(std::unique_ptr<DiagnosticsModel> diagnostics);
    void setAnalytics(std::unique_ptr<AnalyticsModel> analytics);
    Task<> addHandedOverFolders();
    // Gives the application's delegate its two hooks, which hold this model weakly.
    void wireApplicationDelegate();
    static Task<> stopTimerOf(QPointer<AppModel> app);
    // Throws InstanceLockError when another holds the container's lock, or it can't be taken.
    void lockContainer(const AppGroupContainer &container);

    AppGroupSources m_sources;
    QString m_dataFolder;
    InstallLocation::Verdict m_installLocation = InstallLocation::Verdict::Ok;
    Startup m_startup;
    std::optional<VeltoServices> m_services;
    std::shared_ptr<FocusSettings> m_focus;
    std::shared_ptr<FolderPicker> m_picker;
    std::unique_ptr<TimerModel> m_timer;
    std::unique_ptr<BoardModel> m_board;
    std::unique_ptr<DiagnosticsModel> m_diagnostics;
    std::unique_ptr<AnalyticsModel> m_analytics;
    QList<QUrl> m_handedOverFolders;
    std::optional<QString> m_handoffRefusal;
    std::optional<DesktopNotification> m_notification;
    std::optional<InstanceLock> m_instanceLock;
    // The board has had its first load; folders handed over from now on are added at once.
    bool m_hasLoadedBoard = false;
    // The folder chooser was asked for before the board had loaded.
    bool m_wantsFolderChooser = false;
};
