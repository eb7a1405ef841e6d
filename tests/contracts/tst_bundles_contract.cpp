#include "platform/bundle_reading.h"
#include "tests/bundle_files/bundle_files.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::platform;
using namespace zorvane::tests;
namespace fs = std::filesystem;

namespace
{

QByteArray identified(const QByteArray &identifier)
{
    return textPropertyList({{"CFBundleIdentifier", identifier}});
}

} // namespace

/** What every system reads of a bundle. A path is opened once: a system may remember it. */
class TestBundlesContract : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Bundle> open(const fs::path &path) { return m_bundles->open(path); }

    const std::unique_ptr<Bundles> m_bundles = makeBundleReading().bundles;
    std::unique_ptr<ScratchFolder> m_scratch;
    fs::path m_app;

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchFolder>();
        m_app = m_scratch->path() / "Tool.app";
    }

    void nothingAtThePathIsNoBundle()
    {
        QVERIFY(!open(m_app));
        QVERIFY(!open({}));
    }

    void aPlainFileIsNoBundle()
    {
        writeFile(m_app, "text");
        QVERIFY(!open(m_app));
    }

    void aFolderThatCannotBeListedIsNoBundle()
    {
        writeFile(m_app / "Contents" / "Info.plist", identified("x"));
        fs::permissions(m_app, fs::perms::none);
        const OrdinaryUser user(m_scratch->path());
        QVERIFY(!open(m_app));
    }

    void anEmptyFolderIsABundleWithoutIdentifier()
    {
        fs::create_directories(m_app);
        const auto bundle = open(m_app);
        QVERIFY(bundle);
        QCOMPARE(bundle->identifier(), std::nullopt);
        QVERIFY(!bundle->informationValue(u"CFBundleName"_s).isValid());
    }

    void aLinkToAFolderIsABundle()
    {
        writeFile(m_app / "Contents" / "Info.plist", identified("x"));
        const fs::path link = m_scratch->path() / "Link.app";
        fs::create_directory_symlink(m_app, link);
        QCOMPARE(open(link)->identifier(), u"x"_s);
    }

    void informationComesFromTheChosenLayoutOnly_data()
    {
        QTest::addColumn<QString>("bundle");
        QTest::addColumn<QStringList>("places");
        QTest::addColumn<QString>("chosen");
        const QString app = u"Tool.app"_s;
        const QString framework = u"Tool.framework"_s;
        QTest::newRow("contents") << app << QStringList{u"Contents"_s, u"Resources"_s, u"."_s}
                                  << u"Contents"_s;
        QTest::newRow("resources")
            << app << QStringList{u"Resources"_s, u"Support Files"_s} << u"Resources"_s;
        QTest::newRow("support files")
            << app << QStringList{u"Support Files"_s, u"."_s} << u"Support Files"_s;
        QTest::newRow("flat") << app << QStringList{u"."_s} << u"."_s;
        QTest::newRow("framework")
            << framework << QStringList{u"Contents"_s, u"Resources"_s} << u"Resources"_s;
        QTest::newRow("versioned")
            << framework << QStringList{u"Versions/A/Resources"_s, u"Versions/B"_s}
            << u"Versions/A/Resources"_s;
    }

    void informationComesFromTheChosenLayoutOnly()
    {
        QFETCH(QString, bundle);
        QFETCH(QStringList, places);
        QFETCH(QString, chosen);
        const fs::path root = m_scratch->path() / bundle.toStdString();
        for (const QString &place : places)
            writeFile(root / place.toStdString() / "Info.plist", identified(place.toUtf8()));
        if (bundle == u"Tool.framework" && places.first().startsWith(u"Versions"))
            fs::create_directory_symlink("A", root / "Versions" / "Current");
        QCOMPARE(open(root)->identifier(), chosen);
    }

    void aVersionedFrameworkIsReadThroughItsLinks()
    {
        const fs::path root = m_scratch->path() / "Tool.framework";
        writeFile(root / "Versions" / "A" / "Resources" / "Info.plist", identified("x"));
        fs::create_directory_symlink("A", root / "Versions" / "Current");
        fs::create_directory_symlink("Versions/Current/Resources", root / "Resources");
        QCOMPARE(open(root)->identifier(), u"x"_s);
    }

    void aLayoutWithoutInformationHidesTheOthers()
    {
        fs::create_directories(m_app / "Contents");
        writeFile(m_app / "Info.plist", identified("x"));
        QCOMPARE(open(m_app)->identifier(), std::nullopt);
    }

    void aLinkNamedContentsChoosesTheLayout()
    {
        writeFile(m_scratch->path() / "elsewhere" / "Info.plist", identified("x"));
        fs::create_directories(m_app);
        fs::create_directory_symlink("../elsewhere", m_app / "Contents");
        QCOMPARE(open(m_app)->identifier(), u"x"_s);
    }

    void aFileNamedContentsIsNoLayout()
    {
        writeFile(m_app / "Contents", "text");
        writeFile(m_app / "Info.plist", identified("x"));
        QCOMPARE(open(m_app)->identifier(), u"x"_s);
    }

    void theSystemsOwnInformationReplacesTheCommonOne()
    {
        writeFile(m_app / "Contents" / "Info.plist",
            textPropertyList({{"CFBundleIdentifier", "common"}, {"CFBundleName", "Common"}}));
        writeFile(m_app / "Contents" / "Info-macos.plist", identified("own"));
        const auto bundle = open(m_app);
        QCOMPARE(bundle->identifier(), u"own"_s);
        QVERIFY(!bundle->informationValue(u"CFBundleName"_s).isValid());
    }

    void keysOfTheSystemOverrideTheCommonOnes()
    {
        writeFile(m_app / "Contents" / "Info.plist",
            textPropertyList({{"CFBundleName", "Common"}, {"CFBundleName-macos", "Own"}}));
        const auto bundle = open(m_app);
        QCOMPARE(bundle->informationValue(u"CFBundleName"_s), QVariant(u"Own"_s));
        QVERIFY(!bundle->informationValue(u"CFBundleName-macos"_s).isValid());
    }

    void identifierAndExecutableCannotBeOverridden()
    {
        writeFile(m_app / "Contents" / "Info.plist",
            textPropertyList({{"CFBundleIdentifier", "x"}, {"CFBundleIdentifier-macos", "y"},
                {"CFBundleExecutable-macos", "y"}}));
        const auto bundle = open(m_app);
        QCOMPARE(bundle->identifier(), u"x"_s);
        QVERIFY(!bundle->informationValue(u"CFBundleIdentifier-macos"_s).isValid());
        QVERIFY(!bundle->informationValue(u"CFBundleExecutable"_s).isValid());
    }

    void unreadableInformationIsEmpty_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("noise") << QByteArray("\1\2\3");
        QTest::newRow("array") << QByteArray("<plist><array/></plist>");
        QTest::newRow("broken") << QByteArray("<plist><dict>");
    }

    void unreadableInformationIsEmpty()
    {
        QFETCH(QByteArray, bytes);
        writeFile(m_app / "Contents" / "Info.plist", bytes);
        const auto bundle = open(m_app);
        QVERIFY(bundle);
        QCOMPARE(bundle->identifier(), std::nullopt);
    }

    void anIdentifierIsNotTrimmed()
    {
        writeFile(m_app / "Contents" / "Info.plist", identified(" a "));
        QCOMPARE(open(m_app)->identifier(), u" a "_s);
    }

    void anEmptyIdentifierIsPresent()
    {
        writeFile(m_app / "Contents" / "Info.plist", identified(""));
        QCOMPARE(open(m_app)->identifier(), u""_s);
    }

    void anIdentifierThatIsNoTextIsNone()
    {
        writeFile(m_app / "Contents" / "Info.plist",
            "<plist><dict><key>CFBundleIdentifier</key><integer>5</integer></dict></plist>");
        QCOMPARE(open(m_app)->identifier(), std::nullopt);
    }

    void otherTypesAreNoTexts()
    {
        writeFile(m_app / "Contents" / "Info.plist",
            "<plist><dict><key>CFBundleShortVersionString</key><real>2.1</real></dict></plist>");
        const QVariant value = open(m_app)->informationValue(u"CFBundleShortVersionString"_s);
        QVERIFY(value.isValid());
        QVERIFY(value.typeId() != QMetaType::QString);
    }
};

QTEST_GUILESS_MAIN(TestBundlesContract)
#include "tst_bundles_contract.moc"
