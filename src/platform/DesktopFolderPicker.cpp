#include "DesktopFolderPicker.h"

#include "PortalFolderChooser.h"
#include "WidgetFolderDialog.h"

#include <QGuiApplication>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

// The portal can keep its chooser above our window only where a window has a global name, on X11.
QString portalParentWindow()
{
    const QWindow *front = QGuiApplication::focusWindow();
    if (front == nullptr || QGuiApplication::platformName() != u"xcb"_s)
        return {};
    return u"x11:"_s + QString::number(front->winId(), 16);
}

} // namespace

DesktopFolderPicker::DesktopFolderPicker(QDBusConnection bus) : m_bus(std::move(bus)) {}

Task<QList<QUrl>> DesktopFolderPicker::choose(FolderPickerRequest request)
{
    // One question at a time, as with a modal panel: another while one is up counts as cancelled.
    if (*m_asking)
        co_return QList<QUrl>{};
    const std::shared_ptr<bool> asking = m_asking;
    *asking = true;
    const std::optional<QList<QUrl>> fromPortal =
        co_await PortalFolderChooser::choose(m_bus, request, portalParentWindow());
    QList<QUrl> chosen;
    if (fromPortal)
        chosen = *fromPortal;
    else
        chosen = co_await WidgetFolderDialog::choose(request);
    *asking = false;
    co_return chosen;
}
