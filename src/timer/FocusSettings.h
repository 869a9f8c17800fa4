#pragma once

#include <QList>
#include <QObject>
#include <QSettings>
#include <QtQml/qqmlregistration.h>

#include <array>
#include <memory>

// The two user settings of focus sessions, read from and written to the application's settings
// store. The target is copied into each session when it starts, so changing it never touches a
// session that exists.
class FocusSettings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes its one FocusSettings")
    Q_PROPERTY(int targetSeconds READ targetSeconds WRITE setTargetSeconds NOTIFY targetSecondsChanged)
    Q_PROPERTY(bool showsCardNameInFocusPanel READ showsCardNameInFocusPanel WRITE setShowsCardNameInFocusPanel
                   NOTIFY showsCardNameInFocusPanelChanged)
    Q_PROPERTY(QList<int> selectableTargets READ selectableTargets NOTIFY targetSecondsChanged)

public:
    static constexpr int minimumTargetSeconds = 60;
    static constexpr int maximumTargetSeconds = 14400;
    static constexpr int defaultTargetSeconds = 1500;
    // 15, 25, 30, 45, 50, 60 and 90 minutes.
    static constexpr std::array targetChoices{900, 1500, 1800, 2700, 3000, 3600, 5400};

    explicit FocusSettings(std::shared_ptr<QSettings> defaults, QObject *parent = nullptr);

    [[nodiscard]] int targetSeconds() const { return m_targetSeconds; }
    [[nodiscard]] bool showsCardNameInFocusPanel() const { return m_showsCardNameInFocusPanel; }

    // Clamps to the bounds and always stores the clamped value, even when nothing changed.
    void setTargetSeconds(int seconds);
    // Always stores the flag, even when nothing changed.
    void setShowsCardNameInFocusPanel(bool shows);

    // The choices, plus the current target in order when it is none of them, so that a value the
    // picker doesn't offer still shows as selected.
    [[nodiscard]] QList<int> selectableTargets() const;

signals:
    void targetSecondsChanged();
    void showsCardNameInFocusPanelChanged();

private:
    std::shared_ptr<QSettings> m_defaults;
    int m_targetSeconds;
    bool m_showsCardNameInFocusPanel;
};
