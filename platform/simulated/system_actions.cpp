#include "platform/simulated/system_actions.h"

#include "platform/simulated/report.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QWindow>

namespace zorvane::platform::simulated
{

namespace
{

using namespace Qt::StringLiterals;

void open(const QUrl &url)
{
    if (!QDesktopServices::openUrl(url))
        qCWarning(simulatedSystem).noquote() << "The desktop could not open" << url.toString();
}

} // namespace

void DesktopActions::openUrl(const QUrl &url)
{
    open(url);
}

void DesktopActions::openFolder(const QString &path)
{
    open(QUrl::fromLocalFile(path));
}

QList<QString> DesktopActions::downloadsFolders() const
{
    return QStandardPaths::standardLocations(QStandardPaths::DownloadLocation);
}

void DesktopActions::openSystemSettings()
{
    const QString name = u"zorvane-system-settings"_s;
    QString program
        = QStandardPaths::findExecutable(name, {QCoreApplication::applicationDirPath()});
    if (program.isEmpty())
        program = QStandardPaths::findExecutable(name);
    if (program.isEmpty() || !QProcess::startDetached(program, {}))
        qCWarning(simulatedSystem).noquote() << name << "could not be started";
}

void DesktopActions::terminate()
{
    QCoreApplication::quit();
}

void DesktopActions::comeToFront()
{
    // A token with which another program handed us the user's attention is in the environment
    // ($XDG_ACTIVATION_TOKEN), where Qt finds it.
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        if (!window->isVisible())
            continue;
        window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
        window->raise();
        window->requestActivate();
    }
}

bool OpenFileAccess::begin(const QUrl &url)
{
    return url.isLocalFile();
}

void OpenFileAccess::end(const QUrl &) { }

} // namespace zorvane::platform::simulated
