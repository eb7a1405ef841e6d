#include "platform/simulated/bundle_layout.h"
#include "platform/simulated/file_bundles.h"
#include "platform/simulated/property_list.h"
#include "tests/bundle_files/bundle_files.h"

#include <QTest>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace zorvane::platform;
using namespace zorvane::platform::simulated;
using namespace zorvane::tests;
namespace fs = std::filesystem;

namespace
{

QByteArray identified(const QByteArray &identifier)
{
    return textPropertyList({{"CFBundleIdentifier", identifier}});
}

} // namespace

class TestFileBundles : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Bundle> open(const fs::path &path) { return FileBundles({u"en"_s}).open(path); }

    std::unique_ptr<ScratchFolder> m_scratch;
    fs::path m_app;

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchFolder>();
        m_app = m_scratch->path() / "Tool.app";
    }

    void aFolderInAnotherLetterCaseMakesTheLayoutToo()
    {
        writeFile(m_app / "contents" / "Info.plist", identified("lower"));
        QCOMPARE(open(m_app)->identifier(), u"lower"_s);
        writeFile(m_app / "Contents" / "Info.plist", identified("very case"));
        writeFile(m_app / "CONTENTS" / "Info.plist", identified("upper"));
        QCOMPARE(open(m_app)->identifier(), u"very case"_s);
    }

    void informationIsReadInEveryForm_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("XML") << identified("x");
        QTest::newRow("binary") << writePropertyList({{u"CFBundleIdentifier"_s, u"x"_s}});
        QTest::newRow("text") << QByteArray("{ CFBundleIdentifier = \"x\"; }");
    }

    void informationIsReadInEveryForm()
    {
        QFETCH(QByteArray, bytes);
        writeFile(m_app / "Contents" / "Info.plist", bytes);
        QCOMPARE(open(m_app)->identifier(), u"x"_s);
    }

    void informationThatIsTooLongIsEmpty()
    {
        const fs::path file = m_app / "Contents" / "Info.plist";
        writeFile(file, identified("x").leftJustified(bundleTableSizeLimit, ' '));
        QCOMPARE(open(m_app)->identifier(), u"x"_s);
        writeFile(file, identified("x").leftJustified(bundleTableSizeLimit + 1, ' '));
        QCOMPARE(open(m_app)->identifier(), std::nullopt);
    }

    void aPipeInPlaceOfTheInformationIsNotWaitedFor()
    {
        fs::create_directories(m_app / "Contents");
        QCOMPARE(::mkfifo((m_app / "Contents" / "Info.plist").c_str(), 0600), 0);
        QCOMPARE(open(m_app)->identifier(), std::nullopt);
    }
};

QTEST_APPLESS_MAIN(TestFileBundles)
#include "tst_file_bundles.moc"
