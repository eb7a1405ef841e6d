#include "platform/simulated/file_icons.h"
#include "tests/bundle_files/bundle_files.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;
using namespace zorvane::tests;
namespace fs = std::filesystem;

class TestFileIcons : public QObject
{
    Q_OBJECT

private:
    void writeNames(const QList<std::pair<QByteArray, QByteArray>> &entries) const
    {
        writeFile(m_app / "Contents" / "Info.plist", textPropertyList(entries));
    }

    void writeResource(const std::string &name, const QByteArray &bytes) const
    {
        writeFile(m_app / "Contents" / "Resources" / name, bytes);
    }

    [[nodiscard]] QImage icon() const { return FileIcons().icon(m_app, 128); }

    std::unique_ptr<ScratchFolder> m_scratch;
    fs::path m_app;

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchFolder>();
        m_app = m_scratch->path() / "Tool.app";
    }

    void theIconFileIsFoundByItsNames_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QString>("file");
        QTest::newRow("with extension")
            << QByteArray("CFBundleIconFile") << QByteArray("Tool.icns") << u"Tool.icns"_s;
        QTest::newRow("without extension")
            << QByteArray("CFBundleIconFile") << QByteArray("Tool") << u"Tool.icns"_s;
        QTest::newRow("dot in the name")
            << QByteArray("CFBundleIconFile") << QByteArray("Tool 1.2") << u"Tool 1.2.icns"_s;
        QTest::newRow("icon name")
            << QByteArray("CFBundleIconName") << QByteArray("AppIcon") << u"AppIcon.icns"_s;
    }

    void theIconFileIsFoundByItsNames()
    {
        QFETCH(QByteArray, key);
        QFETCH(QByteArray, value);
        QFETCH(QString, file);
        writeNames({{key, value}});
        writeResource(file.toStdString(), iconFamily({{"ic07", squarePng(128, Qt::red)}}));
        QCOMPARE(icon().size(), QSize(128, 128));
        QCOMPARE(icon().pixelColor(64, 64), QColor(Qt::red));
    }

    void aPngIsAnIconToo()
    {
        writeNames({{"CFBundleIconName", "AppIcon"}});
        writeResource("AppIcon.png", squarePng(64, Qt::blue));
        QCOMPARE(icon().pixelColor(1, 1), QColor(Qt::blue));
    }

    void aBundleWithoutIconHasNone()
    {
        fs::create_directories(m_app);
        QVERIFY(icon().isNull());
        writeNames({{"CFBundleIconFile", "Missing"}});
        QVERIFY(icon().isNull());
    }

    void filesThatAreNoIconsAreNone_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray family = iconFamily({{"ic07", squarePng(128, Qt::red)}});
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("icon");
        QTest::newRow("header alone") << QByteArray("icns\0\0\0\x08", 8);
        QTest::newRow("half a header") << QByteArray("icns\0\0", 6);
        QTest::newRow("truncated") << family.first(family.size() - 1);
        QTest::newRow("entry of no length") << QByteArray("icns\0\0\0\x10ic07\0\0\0\0", 16);
        QTest::newRow("entry too long") << QByteArray("icns\0\0\0\x10ic07\xFF\xFF\xFF\xFF", 16);
        QTest::newRow("SVG") << QByteArray("<svg xmlns='http://www.w3.org/2000/svg'/>");
    }

    void filesThatAreNoIconsAreNone()
    {
        QFETCH(QByteArray, bytes);
        writeNames({{"CFBundleIconFile", "Tool"}});
        writeResource("Tool.icns", bytes);
        QVERIFY(icon().isNull());
    }

    void hugeImagesAreNotDecoded()
    {
        QImage wide(5000, 2, QImage::Format_RGB32);
        wide.fill(Qt::red);
        writeNames({{"CFBundleIconFile", "Tool.png"}});
        fs::create_directories(m_app / "Contents" / "Resources");
        QVERIFY(wide.save(
            QString::fromStdString((m_app / "Contents" / "Resources" / "Tool.png").string())));
        QVERIFY(icon().isNull());
    }

    void anIconIsNotLookedForOutsideTheBundle()
    {
        writeNames({{"CFBundleIconFile", "../../../outside.png"}});
        fs::create_directories(m_app / "Contents" / "Resources");
        writeFile(m_scratch->path() / "outside.png", squarePng(64, Qt::red));
        QVERIFY(icon().isNull());
    }

    void anIconNameWithAZeroCharacterNamesNoFile()
    {
        writeResource("Tool.png", squarePng(64, Qt::red));
        writeFile(m_app / "Contents" / "Info.plist", "{ CFBundleIconFile = \"Tool.png\"; }");
        QCOMPARE(icon().width(), 64);
        writeFile(m_app / "Contents" / "Info.plist", "{ CFBundleIconFile = \"Tool.png\\000x\"; }");
        QVERIFY(icon().isNull());
    }

    void anIconNameThatIsNoTextIsNone()
    {
        writeFile(m_app / "Contents" / "Info.plist",
            "<plist><dict><key>CFBundleIconFile</key><integer>5</integer></dict></plist>");
        writeResource("5.png", squarePng(64, Qt::red));
        QVERIFY(icon().isNull());
    }
};

QTEST_GUILESS_MAIN(TestFileIcons)
#include "tst_file_icons.moc"
