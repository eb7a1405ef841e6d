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
namespace fs = std::filesystem;

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
            QVERIFY(path.starts_with(root + '/'));
            const std::string inner(path.substr(root.size() + 1));
            QVERIFY(!items.contains(inner));
            const size_t slash = inner.rfind('/');
            QVERIFY(slash == std::string::npos || items.contains(inner.substr(0, slash)));
            items.emplace(inner, kind);
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

    void everythingBelowIsVisitedAFolderBeforeItsContent()
    {
        writeFile(m_scratch->path() / "a" / "b" / "c.txt", "c");
        writeFile(m_scratch->path() / "a" / "X.app" / "Contents" / "x", "x");
        writeFile(m_scratch->path() / "top", "t");
        const std::map<std::string, ItemKind> expected{
            {"a", ItemKind::Directory},
            {"a/b", ItemKind::Directory},
            {"a/b/c.txt", ItemKind::RegularFile},
            {"a/X.app", ItemKind::Directory},
            {"a/X.app/Contents", ItemKind::Directory},
            {"a/X.app/Contents/x", ItemKind::RegularFile},
            {"top", ItemKind::RegularFile},
        };
        QVERIFY(visited() == expected);
    }

    void hiddenItemsAreSkippedWithAllBelow()
    {
        writeFile(m_scratch->path() / ".dot", "x");
        writeFile(m_scratch->path() / ".hidden" / "inner" / "x", "x");
        writeFile(m_scratch->path() / "..twice", "x");
        QVERIFY(visited().empty());
    }

    void linksAreVisitedAndNotFollowed()
    {
        fs::create_directories(m_scratch->path() / "folder" / "inner");
        writeFile(m_scratch->path() / "file", "x");
        fs::create_directory_symlink("folder", m_scratch->path() / "Y.app");
        fs::create_symlink("file", m_scratch->path() / "link");
        fs::create_symlink("nowhere", m_scratch->path() / "broken");
        fs::create_directory_symlink("..", m_scratch->path() / "folder" / "loop");
        const std::map<std::string, ItemKind> expected{
            {"folder", ItemKind::Directory},
            {"folder/inner", ItemKind::Directory},
            {"folder/loop", ItemKind::Other},
            {"file", ItemKind::RegularFile},
            {"Y.app", ItemKind::Other},
            {"link", ItemKind::Other},
            {"broken", ItemKind::Other},
        };
        QVERIFY(visited() == expected);
    }

    void pipesAreNeitherFoldersNorFiles()
    {
        QCOMPARE(::mkfifo((m_scratch->path() / "pipe").c_str(), 0600), 0);
        const std::map<std::string, ItemKind> expected{{"pipe", ItemKind::Other}};
        QVERIFY(visited() == expected);
    }

    void unreadableFoldersAreVisitedAndLeftOut()
    {
        writeFile(m_scratch->path() / "closed" / "x", "x");
        writeFile(m_scratch->path() / "open" / "x", "x");
        fs::permissions(m_scratch->path() / "closed", fs::perms::none);
        const OrdinaryUser user(m_scratch->path());
        const std::map<std::string, ItemKind> expected{
            {"closed", ItemKind::Directory},
            {"open", ItemKind::Directory},
            {"open/x", ItemKind::RegularFile},
        };
        QVERIFY(visited() == expected);
    }

    void namesThatAreNoTextsAreVisited()
    {
        writeFile(m_scratch->path() / "\xFF\xFE" / "\xC3", "x");
        QVERIFY(visited().contains("\xFF\xFE/\xC3"));
    }

    void aMissingRootVisitsNothing()
    {
        LinuxDirectoryWalk().walk(
            m_scratch->path() / "missing", [](std::string_view, ItemKind) { QFAIL("visited"); });
    }

    void aFileAsRootVisitsNothing()
    {
        writeFile(m_scratch->path() / "file", "x");
        LinuxDirectoryWalk().walk(
            m_scratch->path() / "file", [](std::string_view, ItemKind) { QFAIL("visited"); });
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
