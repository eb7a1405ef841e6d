#include "platform/simulated/system_actions.h"

#include "platform/simulated/product_program.h"
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

/** Of a program without windows, the agent, Qt knows no desktop. */
bool hasWindows()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr;
}

void open(const QUrl &url)
{
    const bool opened = hasWindows()
        ? QDesktopServices::openUrl(url)
        : QProcess::startDetached(u"xdg-open"_s, {QString::fromLatin1(url.toEncoded())});
    if (!opened)
        qCWarning(simulatedSystem).noquote() << "The desktop could not open" << url.toString();
}

/** Starts a program of the product. */
void start(const QString &name)
{
    if (!QProcess::startDetached(productProgram(name), {}))
        qCWarning(simulatedSystem).noquote() << name << "could not be started";
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
    start(u"zorvane-system-settings"_s);
}

void DesktopActions::terminate()
{
    QCoreApplication::quit();
}

void DesktopActions::comeToFront()
{
    if (!hasWindows()) {
        start(u"zorvane"_s); // comes to the front by itself if it runs
        return;
    }
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
