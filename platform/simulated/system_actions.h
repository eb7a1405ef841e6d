#pragma once

#include "platform/file_access.h"
#include "platform/system_actions.h"

namespace zorvane::platform::simulated
{

/** What the desktop can really do, and the simulated system's own settings program. */
class DesktopActions final : public SystemActions
{
public:
    void openUrl(const QUrl &url) override;
    void openFolder(const QString &path) override;
    [[nodiscard]] QList<QString> downloadsFolders() const override;
    /** Starts "zorvane-system-settings" from the program's own folder, or else from $PATH. */
    void openSystemSettings() override;
    void terminate() override;
    /** Where this program has no windows, starts "zorvane", or has the running one come. */
    void comeToFront() override;
};

/** This desktop guards no files beyond their permissions: every local file is granted. */
class OpenFileAccess final : public FileAccess
{
public:
    [[nodiscard]] bool begin(const QUrl &url) override;
    void end(const QUrl &url) override;
};

} // namespace zorvane::platform::simulated
