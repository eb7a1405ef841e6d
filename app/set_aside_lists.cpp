#include "app/set_aside_lists.h"

#include <algorithm>
#include <QDir>
#include <QFile>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace zorvane::app
{

namespace
{

constexpr qsizetype mostKept = 5;

/** Regular files only: of what else bears such a name nothing is read or removed. */
QStringList namesIn(const QDir &folder)
{
    return folder.entryList(
        {u"blocked-applications-*.json"_s}, QDir::Files | QDir::NoSymLinks, QDir::Name);
}

/** A name that sorts by date, in UTC, for a moment of which no file is there yet. */
QString freeName(const QDir &folder, QDateTime moment)
{
    const auto nameFor = [](const QDateTime &date) {
        return u"blocked-applications-%1.json"_s.arg(
            date.toUTC().toString(u"yyyy-MM-dd'T'HH-mm-ss-zzz'Z'"_s));
    };
    while (
        QFileInfo(folder.filePath(nameFor(moment))).isSymLink() || folder.exists(nameFor(moment)))
        moment = moment.addMSecs(1);
    return nameFor(moment);
}

bool holds(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.size() == bytes.size() && file.open(QFile::ReadOnly) && file.readAll() == bytes;
}

bool write(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    return file.open(QFile::WriteOnly) && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner)
        && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace

SetAsideLists::SetAsideLists(std::filesystem::path folder)
    : m_folder(std::move(folder))
{
}

void SetAsideLists::keep(const QByteArray &bytes, const QDateTime &now) const
{
    const QDir folder(QFile::decodeName(m_folder.c_str()));
    if (m_folder.empty() || !QDir().mkpath(folder.path()))
        return;
    const QStringList names = namesIn(folder);
    // A program that cannot save meets the same list at every start.
    if (std::ranges::any_of(
            names, [&](const QString &name) { return holds(folder.filePath(name), bytes); }))
        return;
    const QString name = freeName(folder, now);
    if (!write(folder.filePath(name), bytes))
        return;
    // Never the one that was just kept, which sorts first if the clock was ahead before.
    for (qsizetype i = 0; i < names.size() - (mostKept - 1); ++i)
        QFile::remove(folder.filePath(names.at(i)));
}

} // namespace zorvane::app
