#include "platform/bundle_reading.h"
#include "tests/bundle_files/bundle_files.h"

#include <map>
#include <QTest>
#include <sys/stat.h>

using namespace zorvane::platform;
using namespace zorvane::tests;
namespace fs = std::filesystem;

/** What every system's walk through folders does. */
class TestDirectoryWalkContract : public QObject
{
    Q_OBJECT

private:
    /** What was visited below the scratch folder, by path from there. */
    [[nodiscard]] std::map<std::string, ItemKind> visited() const
    {
        std::map<std::string, ItemKind> items;
        const std::string root = m_scratch->path().string();
        m_walk->walk(root, [&](std::string_view path, ItemKind kind) {
            QVERIFY(path.starts_with(root + '/'));
            const std::string inner(path.substr(root.size() + 1));
            QVERIFY(!items.contains(inner));
            const size_t slash = inner.rfind('/');
            QVERIFY(slash == std::string::npos || items.contains(inner.substr(0, slash)));
            items.emplace(inner, kind);
        });
        return items;
    }

    const std::unique_ptr<DirectoryWalk> m_walk = makeBundleReading().walk;
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

    void aMissingRootVisitsNothing()
    {
        m_walk->walk(
            m_scratch->path() / "missing", [](std::string_view, ItemKind) { QFAIL("visited"); });
    }

    void aFileAsRootVisitsNothing()
    {
        writeFile(m_scratch->path() / "file", "x");
        m_walk->walk(
            m_scratch->path() / "file", [](std::string_view, ItemKind) { QFAIL("visited"); });
    }

    void theRootIsNamedAsItWasGiven()
    {
        writeFile(m_scratch->path() / "folder" / "root" / "file", "x");
        fs::create_directory_symlink("folder", m_scratch->path() / "link");
        const fs::path root = m_scratch->path() / "link" / "root";
        std::string visitedPath;
        m_walk->walk(root, [&](std::string_view path, ItemKind) { visitedPath = path; });
        QCOMPARE(visitedPath, (root / "file").native());
    }
};

QTEST_GUILESS_MAIN(TestDirectoryWalkContract)
#include "tst_directory_walk_contract.moc"
