#include "platform/simulated/linux_directory_walk.h"
#include "tests/bundle_files/bundle_files.h"

#include <algorithm>
#include <fcntl.h>
#include <map>
#include <QTest>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace zorvane::platform;
using namespace zorvane::platform::simulated;
using namespace zorvane::tests;

class TestLinuxDirectoryWalk : public QObject
{
    Q_OBJECT

private:
    /** What was visited below the scratch folder, by path from there. */
    [[nodiscard]] std::map<std::string, ItemKind> visited() const
    {
        std::map<std::string, ItemKind> items;
        const std::string root = m_scratch->path().string();
        LinuxDirectoryWalk().walk(root, [&](std::string_view path, ItemKind kind) {
            items.emplace(path.substr(root.size() + 1), kind);
        });
        return items;
    }

    /** Makes folders in one another, deeper than one call could name. */
    void makeDeepFolders(int depth) const
    {
        int folder = ::open(m_scratch->path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        for (int i = 0; i < depth; ++i) {
            QCOMPARE(::mkdirat(folder, "dddddddddd", 0700), 0);
            const int next = ::openat(folder, "dddddddddd", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            ::close(folder);
            folder = next;
        }
        ::close(::openat(folder, "bottom", O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        ::close(folder);
    }

    std::unique_ptr<ScratchFolder> m_scratch;

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchFolder>(); }

    void namesThatAreNoTextsAreVisited()
    {
        writeFile(m_scratch->path() / "\xFF\xFE" / "\xC3", "x");
        QVERIFY(visited().contains("\xFF\xFE/\xC3"));
    }

    void mountedFileSystemsAreEntered()
    {
        struct stat devices {
        };
        struct stat terminals {
        };
        if (::stat("/dev", &devices) != 0 || ::stat("/dev/pts/ptmx", &terminals) != 0
            || devices.st_dev == terminals.st_dev)
            QSKIP("/dev/pts is no file system of its own here");
        bool entered = false;
        LinuxDirectoryWalk().walk("/dev",
            [&](std::string_view path, ItemKind) { entered = entered || path == "/dev/pts/ptmx"; });
        QVERIFY(entered);
    }

    void deepFoldersNeedFewDescriptors()
    {
        constexpr int depth = 300;
        makeDeepFolders(depth);
        struct rlimit before {
        };
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &before), 0);
        struct rlimit few = before;
        few.rlim_cur = 32;
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &few), 0);
        int folders = 0;
        bool reachedBottom = false;
        LinuxDirectoryWalk().walk(m_scratch->path(), [&](std::string_view path, ItemKind kind) {
            folders += kind == ItemKind::Directory ? 1 : 0;
            reachedBottom = reachedBottom || path.ends_with("/bottom");
        });
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &before), 0);
        QCOMPARE(folders, depth);
        QVERIFY(reachedBottom);
    }

    void foldersTooDeepForAPathAreLeftOut()
    {
        constexpr int depth = 500;
        makeDeepFolders(depth);
        writeFile(m_scratch->path() / "other" / "file", "x");
        const auto items = visited();
        QVERIFY(items.contains("other/file"));
        size_t longest = 0;
        for (const auto &[path, kind] : items)
            longest = std::max(longest, path.size());
        QVERIFY(longest > 4000 && longest < 4200);
    }
};

QTEST_APPLESS_MAIN(TestLinuxDirectoryWalk)
#include "tst_linux_directory_walk.moc"
