#pragma once

#include "FolderPicker.h"

#include <QDBusConnection>

#include <memory>

// How the board asks for folders on the desktop: the desktop's own chooser through its portal when
// one answers, otherwise the toolkit's folder dialog.
class DesktopFolderPicker : public FolderPicker {
public:
    explicit DesktopFolderPicker(QDBusConnection bus = QDBusConnection::sessionBus());

    Task<QList<QUrl>> choose(FolderPickerRequest request) override;

private:
    QDBusConnection m_bus;
    // A question is up. Shared with the question itself, which may outlive the picker.
    std::shared_ptr<bool> m_asking = std::make_shared<bool>(false);
};
