#include "FinderIntegration.h"

#include "AssignIfChanged.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSaveFile>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool anyExists(const QStringList &paths)
{
    return std::ranges::any_of(paths, [](const QString &path) { return QFileInfo::exists(path); });
}

QByteArray resource(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A path as one word of a shell command.
QByteArray shellWord(const QString &path)
{
    QByteArray quoted = path.toUtf8();
    quoted.replace('\'', "'\\''");
    return '\'' + quoted + '\'';
}

// A path as one argument of a desktop entry's Exec key.
// A path as a string literal of Python.
QByteArray pythonString(const QString &path)
{
    QByteArray quoted = path.toUtf8();
    quoted.replace("\\", "\\\\").replace("\"", "\\\"").replace("\n", "\\n").replace("\r", "\\r");
    return '"' + quoted + '"';
}

QByteArray execArgument(const QString &path)
{
    QByteArray quoted = path.toUtf8();
    for (const char special : {'\\', '"', '`', '$'})
        quoted.replace(QByteArray(1, special), QByteArray("\\") + special);
    quoted.replace("%", "%%");
    return '"' + quoted + '"';
}

} // namespace

FinderIntegration::FinderIntegration(QObject *parent)
    : FinderIntegration(FileManagerPlaces::ofThisProcess(), QCoreApplication::applicationFilePath(), parent)
{
}

FinderIntegration::FinderIntegration(FileManagerPlaces places, QString executable, QObject *parent)
    : QObject(parent), m_places(std::move(places)), m_executable(std::move(executable))
{
    refresh();
    // There is no polling: the user installs things elsewhere and comes back to Velto.
    if (auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        connect(application, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive)
                refresh();
        });
    }
}

void FinderIntegration::refresh()
{
    const bool extension = anyExists(m_places.extensionHostLibraries) && anyExists(m_places.extensionPlaces());
    const bool actions = (QFileInfo::exists(m_places.userFilesScript()) || anyExists(m_places.extensionPlaces()))
        && anyExists(m_places.dolphinMenuPlaces());
    if (assignIfChanged(m_isExtensionEnabled, extension))
        emit isExtensionEnabledChanged();
    if (assignIfChanged(m_areActionsInstalled, actions))
        emit areActionsInstalledChanged();
}

void FinderIntegration::openExtensionSettings() const
{
    const QStringList places = m_places.extensionPlaces();
    const auto installed = std::ranges::find_if(places, [](const QString &path) { return QFileInfo::exists(path); });
    const QString folder =
        installed != places.cend() ? QFileInfo(*installed).path() : m_places.userExtensionFolder();
    QDir().mkpath(folder);
    QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

void FinderIntegration::installActions()
{
    QByteArray script = resource(u":/fileManagerActions/add-to-velto-board.sh"_s);
    script.replace("@VELTO_EXECUTABLE@", shellWord(m_executable));
    QByteArray menu = resource(u":/fileManagerActions/io.quillmere.Velto.AddToBoard.desktop"_s);
    menu.replace("@VELTO_EXECUTABLE@", execArgument(m_executable));
    QString failure = writeExecutable(m_places.userFilesScript(), script);
    if (failure.isEmpty())
        failure = writeExecutable(m_places.userDolphinMenu(), menu);
    setActionsError(failure);
    refresh();
}

void FinderIntegration::installExtension()
{
    QByteArray extension = resource(u":/badgeExtension/velto_badges.py.in"_s);
    extension.replace("@VELTO_EXECUTABLE@", pythonString(m_executable));
    const QString folder = m_places.userExtensionFolder();
    QString failure = writeExecutable(folder + u'/' + FileManagerPlaces::extensionFileName(), extension);
    if (failure.isEmpty()) {
        failure = writeExecutable(folder + u"/velto_badges_logic.py"_s,
                                  resource(u":/badgeExtension/velto_badges_logic.py"_s));
    }
    setExtensionError(failure);
    refresh();
}

QString FinderIntegration::writeExecutable(const QString &path, const QByteArray &contents)
{
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder))
        return u"“%1” could not be created."_s.arg(QDir::toNativeSeparators(folder));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size() || !file.commit())
        return u"“%1” could not be written: %2"_s.arg(QDir::toNativeSeparators(path), file.errorString());
    // Both file managers run only entries that are marked executable.
    const auto executable = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner
        | QFileDevice::ReadGroup | QFileDevice::ExeGroup | QFileDevice::ReadOther | QFileDevice::ExeOther;
    if (!QFile::setPermissions(path, executable))
        return u"“%1” could not be marked as a program."_s.arg(QDir::toNativeSeparators(path));
    return {};
}

void FinderIntegration::setActionsError(const QString &text)
{
    if (assignIfChanged(m_actionsError, text))
        emit actionsErrorChanged();
}

void FinderIntegration::setExtensionError(const QString &text)
{
    if (assignIfChanged(m_extensionError, text))
        emit extensionErrorChanged();
}
