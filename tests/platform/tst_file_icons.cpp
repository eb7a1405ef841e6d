#include "platform/simulated/file_icons.h"
#include "platform/simulated/icon_family.h"
#include "tests/bundle_files/bundle_files.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::platform::simulated;
using namespace zorvane::tests;
namespace fs = std::filesystem;

namespace
{

/** @p count bytes of one value, as runs of the older icon types. */
QByteArray run(int count, char value)
{
    QByteArray bytes;
    for (; count > 0; count -= 130)
        bytes += QByteArray(1, char(std::min(count, 130) + 125)) + value;
    return bytes;
}

/** The entries of a 128-pixel icon of an older type, red and opaque. */
QList<std::pair<QByteArray, QByteArray>> olderIcon()
{
    constexpr int pixels = 128 * 128;
    return {{"it32", QByteArray(4, 0) + run(pixels, '\xFF') + run(pixels, 0) + run(pixels, 0)},
        {"t8mk", QByteArray(pixels, '\xFF')}};
}

} // namespace

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

    QImage icon(int side = 128) const { return FileIcons().icon(m_app, side); }

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

    void theRepresentationThatSuitsBestIsChosen_data()
    {
        QTest::addColumn<QByteArrayList>("types");
        QTest::addColumn<int>("chosen");
        QTest::newRow("the very size") << QByteArrayList{"ic10", "ic08", "ic07", "ic12"} << 128;
        QTest::newRow("next larger") << QByteArrayList{"ic10", "ic09", "ic08", "ic12"} << 256;
        QTest::newRow("only larger") << QByteArrayList{"ic10"} << 1024;
        QTest::newRow("largest of the smaller") << QByteArrayList{"icp4", "ic12", "icp5"} << 64;
        QTest::newRow("doubled sizes") << QByteArrayList{"ic11", "ic14", "ic13"} << 256;
    }

    void theRepresentationThatSuitsBestIsChosen()
    {
        QFETCH(QByteArrayList, types);
        QFETCH(int, chosen);
        const QHash<QByteArray, int> sides{{"icp4", 16}, {"icp5", 32}, {"ic11", 32}, {"ic12", 64},
            {"ic07", 128}, {"ic08", 256}, {"ic13", 256}, {"ic09", 512}, {"ic14", 512},
            {"ic10", 1024}};
        QList<std::pair<QByteArray, QByteArray>> entries;
        for (const QByteArray &type : types)
            entries.append({type, squarePng(sides.value(type), Qt::green)});
        writeNames({{"CFBundleIconFile", "Tool"}});
        writeResource("Tool.icns", iconFamily(entries));
        QCOMPARE(icon().width(), chosen);
    }

    void theOlderTypesAreRead()
    {
        writeNames({{"CFBundleIconFile", "Tool"}});
        writeResource("Tool.icns", iconFamily(olderIcon()));
        QCOMPARE(icon().size(), QSize(128, 128));
        QCOMPARE(icon().pixelColor(64, 64), QColor(Qt::red));
    }

    void anotherRepresentationStandsInForADamagedOne()
    {
        writeNames({{"CFBundleIconFile", "Tool"}});
        const QByteArray damaged = squarePng(128, Qt::red).first(40);
        writeResource("Tool.icns",
            iconFamily({{"ic07", damaged}, {"ic08", "\0\0\0\x0CjP  "},
                {"ic12", squarePng(64, Qt::green)}}));
        QCOMPARE(icon().width(), 64);
    }

    void unknownEntriesAreSkipped()
    {
        writeNames({{"CFBundleIconFile", "Tool"}});
        writeResource("Tool.icns",
            iconFamily({{"TOC ", "ic07\0\0\0\1"}, {"info", "bplist00"}, {"ic04", "ARGBxxxx"},
                {"ic07", squarePng(128, Qt::red)}}));
        QCOMPARE(icon().width(), 128);
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

    void anIconNameThatIsNoTextIsNone()
    {
        writeFile(m_app / "Contents" / "Info.plist",
            "<plist><dict><key>CFBundleIconFile</key><array/></dict></plist>");
        QVERIFY(icon().isNull());
    }
};

QTEST_GUILESS_MAIN(TestFileIcons)
#include "tst_file_icons.moc"
