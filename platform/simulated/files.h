#pragma once

#include <filesystem>
#include <optional>
#include <QByteArray>
#include <QString>
#include <sys/types.h>

/**
 * @file
 * Files of the state folder: read whole, replaced whole, locked against other programs. Every
 * function is safe to use from any thread and blocks on the disk. Needs a POSIX system.
 */
namespace zorvane::platform::simulated
{

/** Tells one content of a file from another without reading it. */
struct FileStamp {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    qint64 modifiedSeconds = 0;
    qint64 modifiedNanoseconds = 0;

    friend bool operator==(const FileStamp &, const FileStamp &) = default;
};

/** The stamp of the file at @p path; nothing if there is none. */
[[nodiscard]] std::optional<FileStamp> stampOf(const std::filesystem::path &path);

/** What was found where a file was looked for. */
struct FileContents {
    enum class Kind {
        Absent, ///< there is nothing
        Unreadable, ///< there is something that cannot be read, error says why
        Read, ///< bytes holds all of it
    };

    Kind kind = Kind::Absent;
    QByteArray bytes;
    /** Of the very bytes that were read; absent unless they were. */
    std::optional<FileStamp> stamp;
    QString error;

    friend bool operator==(const FileContents &, const FileContents &) = default;
};

/** Reads a regular file of at most 256 MiB; a larger one is Unreadable. */
[[nodiscard]] FileContents readFile(const std::filesystem::path &path);

/**
 * Replaces the file at @p path so that a program killed, or a machine stopped, at any moment leaves
 * the old or the new content: written beside it, brought to the disk, renamed. The file's writers
 * must exclude each other by a FileLock. Returns what went wrong, if anything did: the old content
 * stands then, or, if only the folder could not be brought to the disk, the new one until a machine
 * is stopped in the next moments.
 */
[[nodiscard]] std::optional<QString> replaceFile(
    const std::filesystem::path &path, const QByteArray &bytes);

/**
 * Gives the file at @p path a second name beside it that no other file has, so that its content
 * outlives a replacement. Returns that name; nothing if it could not be given.
 */
[[nodiscard]] std::optional<std::filesystem::path> keepAside(const std::filesystem::path &path);

/** Creates a folder for this user alone, with the folders above it. Returns what went wrong. */
[[nodiscard]] std::optional<QString> makeFolder(const std::filesystem::path &path);

/**
 * A lock that excludes all other programs, and other holders in this one, until it is destroyed or
 * the program ends in any way. Not handed on to programs that are started meanwhile.
 */
class FileLock
{
public:
    FileLock() = default;
    ~FileLock();
    FileLock(FileLock &&other) noexcept;
    FileLock &operator=(FileLock &&other) noexcept;

    /** Waits until the lock file at @p path is free; it is made if there is none. */
    [[nodiscard]] static FileLock wait(const std::filesystem::path &path);
    /** Takes the lock if it is free. */
    [[nodiscard]] static FileLock attempt(const std::filesystem::path &path);

    [[nodiscard]] bool isHeld() const { return m_descriptor >= 0; }
    /** Why the lock is not held; empty if another holder is the reason. */
    [[nodiscard]] const QString &error() const { return m_error; }

private:
    static FileLock open(const std::filesystem::path &path, int operation);

    int m_descriptor = -1;
    QString m_error;
};

/** The lock file that guards the replacement of the file at @p path. */
[[nodiscard]] std::filesystem::path lockPathOf(const std::filesystem::path &path);

/** A path as text for messages and for Qt. */
[[nodiscard]] QString textOf(const std::filesystem::path &path);

} // namespace zorvane::platform::simulated
