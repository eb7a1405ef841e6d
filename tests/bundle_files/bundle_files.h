#pragma once

#include <filesystem>
#include <QByteArray>
#include <QImage>
#include <QList>
#include <QTemporaryDir>
#include <utility>

/** @file Lays out the files of bundles. Every failure to write stops the test program. */
namespace zorvane::tests
{

/** A folder that goes with the object, unreadable folders in it too. */
class ScratchFolder
{
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder &) = delete;
    ScratchFolder &operator=(const ScratchFolder &) = delete;

    [[nodiscard]] const std::filesystem::path &path() const { return m_path; }

private:
    QTemporaryDir m_folder;
    std::filesystem::path m_path;
};

enum class Mode { Plain, Executable };

/** Writes a file; the folders above it are made. */
void writeFile(const std::filesystem::path &path, const QByteArray &bytes, Mode mode = Mode::Plain);

/** Sets the attribute of a file that holds a part of its signature; false where none can be set. */
[[nodiscard]] bool setSignatureAttribute(
    const std::filesystem::path &path, const std::string &part, const QByteArray &value);

/** An XML property list of a dictionary of texts. */
[[nodiscard]] QByteArray textPropertyList(const QList<std::pair<QByteArray, QByteArray>> &entries);

/** Writes Contents/Info.plist of a bundle with this identifier and main executable. */
void writeInformation(const std::filesystem::path &bundle, const QByteArray &identifier,
    const QByteArray &executable);

/** @p image as a PNG, its colour space with it. */
[[nodiscard]] QByteArray pngOf(const QImage &image);

/** A square of one colour as a PNG. */
[[nodiscard]] QByteArray squarePng(int side, const QColor &colour);

/** An icon family of these entries: four-letter type and content. */
[[nodiscard]] QByteArray iconFamily(const QList<std::pair<QByteArray, QByteArray>> &entries);

/**
 * Takes the administrator's rights from the process while it lives, so that closed files are closed
 * to it; everything in @p folder is given to the user that is left. Changes nothing for others.
 */
class OrdinaryUser
{
public:
    explicit OrdinaryUser(const std::filesystem::path &folder);
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

private:
    bool m_wasAdministrator;
};

} // namespace zorvane::tests
