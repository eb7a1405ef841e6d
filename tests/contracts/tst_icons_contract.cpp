#include "platform/bundle_reading.h"
#include "tests/bundle_files/bundle_files.h"

#include <QTest>
#include <thread>

using namespace Qt::StringLiterals;
using namespace zorvane::platform;
using namespace zorvane::tests;

/** What every system's icons are like. How the desktop adorns them is its own business. */
class TestIconsContract : public QObject
{
    Q_OBJECT

private:
    const std::unique_ptr<Icons> m_icons = makeBundleReading().icons;
    std::unique_ptr<ScratchFolder> m_scratch;

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchFolder>();
        const auto app = m_scratch->path() / "Tool.app";
        writeFile(app / "Contents" / "Info.plist",
            textPropertyList({{"CFBundleIdentifier", "org.example.tool"},
                {"CFBundlePackageType", "APPL"}, {"CFBundleIconFile", "Tool"}}));
        writeFile(app / "Contents" / "Resources" / "Tool.icns",
            iconFamily({{"ic07", squarePng(128, Qt::red)}}));
    }

    void anApplicationsIconIsItsOwn()
    {
        const QImage icon = m_icons->icon(m_scratch->path() / "Tool.app", 128);
        QCOMPARE(icon.size(), QSize(128, 128));
        const QColor middle = icon.pixelColor(64, 64);
        QVERIFY(middle.red() > 200 && middle.green() < 80 && middle.blue() < 80);
        QCOMPARE(middle.alpha(), 255);
    }

    void iconsAreReadOnEveryThread()
    {
        QImage icon;
        std::thread([&] { icon = m_icons->icon(m_scratch->path() / "Tool.app", 128); }).join();
        QCOMPARE(icon.size(), QSize(128, 128));
    }
};

QTEST_GUILESS_MAIN(TestIconsContract)
#include "tst_icons_contract.moc"
