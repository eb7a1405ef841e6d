#include "platform/simulated/bundle_layout.h"
#include "platform/simulated/file_bundles.h"
#include "platform/simulated/property_list.h"
#include "tests/bundle_files/bundle_files.h"

#include <QStringEncoder>
#include <QTest>

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

QByteArray named(const QByteArray &name)
{
    return "\"CFBundleDisplayName\" = \"" + name + "\";\n";
}

} // namespace

class TestLocalizedInformation : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Bundle> open(const fs::path &path)
    {
        return FileBundles(m_languages).open(path);
    }

    QString displayName(const fs::path &path)
    {
        return open(path)->informationValue(u"CFBundleDisplayName"_s).toString();
    }

    QStringList m_languages;
    std::unique_ptr<ScratchFolder> m_scratch;
    fs::path m_app;

private Q_SLOTS:
    void init()
    {
        m_languages = {u"en"_s};
        m_scratch = std::make_unique<ScratchFolder>();
        m_app = m_scratch->path() / "Tool.app";
    }

    void theLocalisedValueComesFirst()
    {
        writeFile(m_app / "Contents" / "Info.plist",
            textPropertyList({{"CFBundleDisplayName", "Plain"}, {"CFBundleName", "Name"}}));
        writeFile(
            m_app / "Contents" / "Resources" / "en.lproj" / "InfoPlist.strings", named("Loc"));
        QCOMPARE(displayName(m_app), u"Loc"_s);
        QCOMPARE(open(m_app)->informationValue(u"CFBundleName"_s), QVariant(u"Name"_s));
    }

    void aKeyThatIsOnlyLocalisedIsUsed()
    {
        writeFile(
            m_app / "Contents" / "Resources" / "en.lproj" / "InfoPlist.strings", named("Loc"));
        QCOMPARE(displayName(m_app), u"Loc"_s);
    }

    void theIdentifierIsNeverLocalised()
    {
        writeFile(m_app / "Contents" / "Info.plist", identified("x"));
        writeFile(m_app / "Contents" / "Resources" / "en.lproj" / "InfoPlist.strings",
            "CFBundleIdentifier = y;");
        QCOMPARE(open(m_app)->identifier(), u"x"_s);
    }

    void localisedTablesComeInEveryForm_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QString table = u"\"CFBundleDisplayName\" = \"Größe\";"_s;
        QTest::newRow("UTF-8") << table.toUtf8();
        QTest::newRow("UTF-16, marked") << QByteArray(
            QStringEncoder(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom)(table));
        QTest::newRow("UTF-16BE") << QByteArray(QStringEncoder(QStringEncoder::Utf16BE)(table));
        QTest::newRow("binary") << writePropertyList({{u"CFBundleDisplayName"_s, u"Größe"_s}});
    }

    void localisedTablesComeInEveryForm()
    {
        QFETCH(QByteArray, bytes);
        writeFile(m_app / "Contents" / "Resources" / "en.lproj" / "InfoPlist.strings", bytes);
        QCOMPARE(displayName(m_app), u"Größe"_s);
    }

    void aCompiledTableIsKeyedByLanguage()
    {
        fs::create_directories(m_app / "Contents" / "Resources" / "en.lproj");
        writeFile(m_app / "Contents" / "Resources" / "InfoPlist.loctable",
            writePropertyList({{u"en"_s, QVariantMap{{u"CFBundleDisplayName"_s, u"Loc"_s}}},
                {u"de"_s, QVariantMap{{u"CFBundleDisplayName"_s, u"Lok"_s}}}}));
        QCOMPARE(displayName(m_app), u"Loc"_s);
        m_languages = {u"de"_s};
        QCOMPARE(displayName(m_app), u"Lok"_s);
    }

    void aTableOutsideTheLocalisedFoldersStands()
    {
        const fs::path resources = m_app / "Contents" / "Resources";
        writeFile(resources / "en.lproj" / "InfoPlist.strings", named("Loc"));
        writeFile(resources / "InfoPlist.loctable",
            writePropertyList({{u"en"_s, QVariantMap{{u"CFBundleDisplayName"_s, u"Table"_s}}}}));
        writeFile(resources / "InfoPlist.strings", named("All"));
        QCOMPARE(displayName(m_app), u"All"_s);
    }

    void aCompiledTableComesBeforeTheFolderOfItsLanguage()
    {
        const fs::path resources = m_app / "Contents" / "Resources";
        writeFile(resources / "en.lproj" / "InfoPlist.strings", named("Loc"));
        writeFile(resources / "InfoPlist.loctable",
            writePropertyList({{u"de"_s, QVariantMap{{u"CFBundleDisplayName"_s, u"Lok"_s}}},
                {u"en"_s, QVariantMap{{u"CFBundleDisplayName"_s, u"Table"_s}}}}));
        QCOMPARE(displayName(m_app), u"Table"_s);
        m_languages = {u"fr"_s};
        QCOMPARE(displayName(m_app), u"Table"_s); // the development region's
    }

    void aCompiledTableOfNoUseLeavesTheFolders()
    {
        const fs::path resources = m_app / "Contents" / "Resources";
        writeFile(resources / "en.lproj" / "InfoPlist.strings", named("Loc"));
        writeFile(resources / "InfoPlist.loctable", writePropertyList({{u"en"_s, u"text"_s}}));
        QCOMPARE(displayName(m_app), u"Loc"_s);
    }

    void theSortingOfEqualLanguagesIsKept()
    {
        for (const char *folder : {"en-US", "fr", "en_GB", "en-AU"})
            writeFile(m_app / "Contents" / "Resources" / (std::string(folder) + ".lproj")
                    / "InfoPlist.strings",
                named(folder));
        QCOMPARE(displayName(m_app), u"en-AU"_s);
    }

    void tablesThatAreTooLongAreNotRead()
    {
        const fs::path table = m_app / "Contents" / "Resources" / "en.lproj" / "InfoPlist.strings";
        const QByteArray bytes = named("Loc");
        writeFile(table, bytes.leftJustified(bundleTableSizeLimit, ' '));
        QCOMPARE(displayName(m_app), u"Loc"_s);
        writeFile(table, bytes.leftJustified(bundleTableSizeLimit + 1, ' '));
        QCOMPARE(displayName(m_app), u""_s);
    }

    void theBestLanguageIsChosen_data()
    {
        QTest::addColumn<QStringList>("languages");
        QTest::addColumn<QStringList>("folders");
        QTest::addColumn<QString>("chosen");
        const auto row
            = [](const char *name, const QStringList &languages, const QStringList &folders,
                  const QString &chosen) { QTest::newRow(name) << languages << folders << chosen; };
        row("the very one", {u"de"_s}, {u"en"_s, u"de"_s, u"de_AT"_s}, u"de"_s);
        row("with region", {u"de-AT"_s}, {u"de"_s, u"de_AT"_s}, u"de_AT"_s);
        row("without region", {u"de-AT"_s}, {u"en"_s, u"de"_s}, u"de"_s);
        row("another region", {u"en"_s}, {u"fr"_s, u"en-GB"_s}, u"en-GB"_s);
        row("old name", {u"en"_s}, {u"fr"_s, u"English"_s}, u"English"_s);
        row("second language", {u"it"_s, u"de"_s}, {u"en"_s, u"de"_s}, u"de"_s);
        row("development region", {u"de"_s}, {u"it"_s, u"fr"_s}, u"fr"_s);
        row("base", {u"de"_s}, {u"it"_s, u"Base"_s}, u"Base"_s);
        row("none", {u"de"_s}, {u"it"_s}, u"Plain"_s);
    }

    void theBestLanguageIsChosen()
    {
        QFETCH(QStringList, languages);
        QFETCH(QStringList, folders);
        QFETCH(QString, chosen);
        m_languages = languages;
        writeFile(m_app / "Contents" / "Info.plist",
            textPropertyList(
                {{"CFBundleDisplayName", "Plain"}, {"CFBundleDevelopmentRegion", "fr"}}));
        for (const QString &folder : folders) {
            writeFile(m_app / "Contents" / "Resources" / (folder + u".lproj"_s).toStdString()
                    / "InfoPlist.strings",
                named(folder.toUtf8()));
        }
        QCOMPARE(displayName(m_app), chosen);
    }

    void aFlatBundleIsLocalisedAtItsRoot()
    {
        writeFile(m_app / "Info.plist", identified("x"));
        writeFile(m_app / "en.lproj" / "InfoPlist.strings", named("Loc"));
        QCOMPARE(displayName(m_app), u"Loc"_s);
    }
};

QTEST_APPLESS_MAIN(TestLocalizedInformation)
#include "tst_localized_information.moc"
