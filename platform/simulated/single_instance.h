#pragma once

#include "platform/simulated/files.h"
#include "platform/single_instance.h"

#include <QLocalServer>
#include <QString>

namespace zorvane::platform::simulated
{

/**
 * One program for each state folder: the first holds a lock in it, which ends with the program
 * however that ends, and listens on a socket beside it. A later start sends there the token with
 * which the desktop lets a window come to the front ($XDG_ACTIVATION_TOKEN), and the first keeps it
 * in its own environment for the window to use.
 *
 * In a folder that cannot be written to nothing could be kept, nor could two programs be kept
 * apart; so the start is refused.
 */
class LockedInstance final : public SingleInstance
{
public:
    /** @p name is the program's, and that of its files in @p folder. */
    LockedInstance(std::filesystem::path folder, QString name);
    ~LockedInstance() override;

    [[nodiscard]] Outcome acquire() override;
    void onBringForward(std::function<void()> action) override;

private:
    enum class Answer { Came, Silent, NoListener };

    [[nodiscard]] Outcome refuse(const QString &reason) const;
    [[nodiscard]] QString socketAddress() const;
    void listen();
    void hear(QLocalSocket *caller);
    [[nodiscard]] Answer callFirst() const;

    const std::filesystem::path m_folder;
    const QString m_name;
    FileLock m_lock;
    /** The open state folder, the short way to the socket in it. */
    int m_folderDescriptor = -1;
    QLocalServer m_server;
    std::function<void()> m_bringForward;
};

} // namespace zorvane::platform::simulated
