#include "tests/bundle_files/bundle_files.h"

#include <fstream>
#include <QBuffer>
#include <QColor>
#include <QtEndian>
#include <sys/xattr.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace zorvane::tests
{

ScratchFolder::ScratchFolder()
    : m_path(m_folder.path().toStdString())
{
    if (!m_folder.isValid())
        qFatal("no temporary folder");
    m_folder.setAutoRemove(false);
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    for (fs::recursive_directory_iterator item(m_path, ignored), end; item != end;
         item.increment(ignored)) {
        if (item->is_directory(ignored) && !item->is_symlink(ignored))
            fs::permissions(item->path(), fs::perms::owner_all, ignored);
    }
    fs::remove_all(m_path, ignored);
}

void writeFile(const fs::path &path, const QByteArray &bytes, Mode mode)
{
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.constData(), bytes.size());
    file.close();
    if (!file)
        qFatal("cannot write %s", path.c_str());
    if (mode == Mode::Executable)
        fs::permissions(path, fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec,
            fs::perm_options::add);
}

bool setSignatureAttribute(const fs::path &path, const std::string &part, const QByteArray &value)
{
    const auto size = static_cast<size_t>(value.size());
#ifdef __APPLE__
    const std::string name = "com.apple.cs." + part;
    return ::setxattr(path.c_str(), name.c_str(), value.constData(), size, 0, 0) == 0;
#else
    const std::string name = "user.com.apple.cs." + part;
    return ::setxattr(path.c_str(), name.c_str(), value.constData(), size, 0) == 0;
#endif
}

QByteArray textPropertyList(const QList<std::pair<QByteArray, QByteArray>> &entries)
{
    QByteArray content;
    for (const auto &[key, value] : entries)
        content += "<key>" + key + "</key><string>" + value + "</string>\n";
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>\n" + content
        + "</dict></plist>\n";
}

void writeInformation(
    const fs::path &bundle, const QByteArray &identifier, const QByteArray &executable)
{
    writeFile(bundle / "Contents" / "Info.plist",
        textPropertyList({{"CFBundleIdentifier", identifier}, {"CFBundleExecutable", executable}}));
}

QByteArray pngOf(const QImage &image)
{
    QBuffer buffer;
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG"))
        qFatal("cannot make a PNG");
    return buffer.data();
}

QByteArray squarePng(int side, const QColor &colour)
{
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(colour);
    return pngOf(image);
}

QByteArray iconFamily(const QList<std::pair<QByteArray, QByteArray>> &entries)
{
    const auto entry = [](const QByteArray &type, const QByteArray &content) {
        QByteArray length(4, 0);
        qToBigEndian(quint32(content.size() + 8), length.data());
        return type + length + content;
    };
    QByteArray content;
    for (const auto &[type, bytes] : entries)
        content += entry(type, bytes);
    return entry("icns", content);
}

OrdinaryUser::OrdinaryUser(const fs::path &folder)
    : m_wasAdministrator(::geteuid() == 0)
{
    if (!m_wasAdministrator)
        return;
    constexpr uid_t nobody = 65534;
    bool given = ::chown(folder.c_str(), nobody, nobody) == 0;
    for (const fs::directory_entry &item : fs::recursive_directory_iterator(folder))
        given = given && ::lchown(item.path().c_str(), nobody, nobody) == 0;
    if (!given || ::seteuid(nobody) != 0)
        qFatal("cannot become an ordinary user");
}

OrdinaryUser::~OrdinaryUser()
{
    if (m_wasAdministrator && ::seteuid(0) != 0)
        qFatal("cannot become the administrator again");
}

} // namespace zorvane::tests
