#pragma once

#include <QList>
#include <QString>
#include <QUrl>

namespace zorvane::platform
{

/** Things that the program asks the desktop to do. Main thread; failures are silent. */
class SystemActions
{
public:
    virtual ~SystemActions() = default;

    /** Opens an address with the system's default handler. */
    virtual void openUrl(const QUrl &url) = 0;
    /** Shows a folder in the file browser. */
    virtual void openFolder(const QString &path) = 0;
    /** The user's downloads folders, the usual one first. */
    [[nodiscard]] virtual QList<QString> downloadsFolders() const = 0;
    /** Opens the system's settings where extensions are allowed. */
    virtual void openSystemSettings() = 0;
    /** Ends the program as its Quit command does. */
    virtual void terminate() = 0;
    /** Brings the program in front of all others, as far as the desktop allows. */
    virtual void comeToFront() = 0;
};

} // namespace zorvane::platform
