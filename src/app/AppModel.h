#pragma once

#include "AppGroupSources.h"
#include "FocusSettings.h"
#include "Task.h"
#include "TimerModel.h"
#include "VeltoServices.h"

#include <QObject>
#include <QSettings>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

// The root of the running system: it finds the shared container, opens and migrates the database,
// and then holds every long-lived model. Until that has worked, the window shows a waiting or a
// failure screen, and no model exists.
class AppModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes its one AppModel")
    Q_PROPERTY(StartupKind startupKind READ startupKind NOTIFY startupChanged)
    Q_PROPERTY(QString failureMessage READ failureMessage NOTIFY startupChanged)
    Q_PROPERTY(TimerModel *timer READ timer NOTIFY timerChanged)
    Q_PROPERTY(FocusSettings *focus READ focus CONSTANT)

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

    // `defaults` is the application's standard settings store; absent means the user's own.
    explicit AppModel(AppGroupSources sources = AppGroupSources::ofThisProcess(),
                      std::shared_ptr<QSettings> defaults = nullptr, QObject *parent = nullptr);
    ~AppModel() override;

    [[nodiscard]] const Startup &startup() const { return m_startup; }
    [[nodiscard]] StartupKind startupKind() const { return m_startup.kind; }
    [[nodiscard]] QString failureMessage() const { return m_startup.message; }
    [[nodiscard]] const std::optional<VeltoServices> &services() const { return m_services; }
    [[nodiscard]] TimerModel *timer() const { return m_timer.get(); }
    // Made once with the model and never replaced, so it outlives every retry.
    [[nodiscard]] FocusSettings *focus() const { return m_focus.get(); }

    // Never fails towards the caller: every failure lands in startup. Idempotent once it worked.
    Task<> start();
    // Drops whatever a failed start left, then starts again.
    Task<> retry();

    // What the window calls; each starts the task and returns at once.
    Q_INVOKABLE void requestStart();
    Q_INVOKABLE void requestRetry();

signals:
    void startupChanged();
    void servicesChanged();
    void timerChanged();

private:
    void setStartup(const Startup &startup);
    void setServices(std::optional<VeltoServices> services);
    void setTimer(std::unique_ptr<TimerModel> timer);

    AppGroupSources m_sources;
    Startup m_startup;
    std::optional<VeltoServices> m_services;
    std::shared_ptr<FocusSettings> m_focus;
    std::unique_ptr<TimerModel> m_timer;
};
