#include "ui/observed.h"
#include "ui/samples.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

/** The main window from its least size to a large screen, and with names of all kinds. */
class TestWindowSizes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everythingFitsItsWidth_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("least") << QSize(680, 560 + WindowFixture::menuBarHeight);
        QTest::newRow("default") << QSize(760, 650 + WindowFixture::menuBarHeight);
        QTest::newRow("full screen") << QSize(1920, 1080);
        QTest::newRow("large screen") << QSize(3840, 2160);
    }

    void everythingFitsItsWidth()
    {
        QFETCH(QSize, size);
        const QString endless(300, u'W');
        WindowFixture fixture({{endless, u"org.example."_s + endless, endless, std::nullopt}});
        fixture.awaitApproval();
        QVERIFY(fixture.waitUntilGrown(u"approvalPanel"_s));
        fixture.window()->resize(size);
        const auto right = size.width() - 20.0;
        QTRY_COMPARE(inWindow(fixture.item(u"dropZone"_s)).right(), right);
        QCOMPARE(inWindow(fixture.item(u"blockedApps"_s)).right(), right);
        QCOMPARE(inWindow(fixture.button(u"Remove from list"_s)).right(), right - 12);
        QCOMPARE(inWindow(fixture.item(u"protectionSwitch"_s)).right(), right);
        const auto *const status = fixture.item(u"statusText"_s);
        QVERIFY(status->width() >= status->implicitWidth());
        QVERIFY(fixture.item(u"rowName"_s)->property("truncated").toBool());
        QVERIFY(fixture.item(u"rowIdentifiers"_s)->property("truncated").toBool());
        const auto texts
            = fixture.items([](const QQuickItem *item) { return item->inherits("QQuickText"); });
        for (const auto *const text : texts)
            QVERIFY2(inWindow(text).right() <= size.width(), qUtf8Printable(text->objectName()));
        QVERIFY(inWindow(fixture.item(u"rowName"_s)).right()
            < inWindow(fixture.item(u"blockedBadge"_s)).left());
    }

    void theLongestStatusLeavesTheTaglineItsPlaceAtTheLeastWidth()
    {
        WindowFixture fixture;
        fixture.requireInstallation();
        fixture.window()->resize(680, 560 + WindowFixture::menuBarHeight);
        QTRY_COMPARE(inWindow(fixture.item(u"protectionSwitch"_s)).right(), 660.0);
        const auto *const tagline = fixture.text(u"Control which apps can access the network"_s);
        QVERIFY(fixture.text(u"Move to Applications"_s) != nullptr);
        QVERIFY(tagline->width() >= tagline->implicitWidth());
        QVERIFY(inWindow(tagline).right()
            <= inWindow(fixture.button(u"Show getting started"_s)).left());
    }

    void aNameThatIsReadFromTheRightStandsBesideItsIconToo()
    {
        const WindowFixture fixture(
            {{u"\u05d0\u05d8\u05dc\u05e1"_s, u"org.example.atlas"_s, std::nullopt, std::nullopt}});
        const auto *const name = fixture.item(u"rowName"_s);
        QCOMPARE(name->property("effectiveHorizontalAlignment").toInt(), int(Qt::AlignLeft));
    }

    void nothingMovesWhenProcessesAreSeen()
    {
        WindowFixture fixture({atlas});
        const auto places = [&] {
            QList<QRectF> result;
            for (const auto &name :
                {u"rowName"_s, u"blockedBadge"_s, u"disclosure"_s, u"dropZone"_s, u"countBadge"_s})
                result << inWindow(fixture.item(name));
            return result << inWindow(fixture.button(u"Remove from list"_s));
        };
        const auto before = places();
        QList<zorvane::inspection::DiscoveredNetworkProcess> processes;
        for (int number = 0; number < 98; ++number)
            processes << observedProcess(
                fixture.platform, u"Atlas"_s, u"helper %1"_s.arg(number), std::nullopt);
        observe(fixture.platform, processes);
        QVERIFY(fixture.text(u"99 network processes"_s) != nullptr);
        QCOMPARE(places(), before);
        QVERIFY(inWindow(fixture.text(u"99 network processes"_s)).left()
            > inWindow(fixture.item(u"disclosure"_s)).left());
    }

    void theTextOfTheStatusMovesNothingButTheHelpButton()
    {
        WindowFixture fixture({atlas});
        const auto toggle = inWindow(fixture.item(u"protectionSwitch"_s));
        const auto zone = inWindow(fixture.item(u"dropZone"_s));
        fixture.activate();
        QCOMPARE(inWindow(fixture.item(u"protectionSwitch"_s)), toggle);
        QCOMPARE(inWindow(fixture.item(u"dropZone"_s)), zone);
    }
};

QTEST_MAIN(TestWindowSizes)
#include "tst_window_sizes.moc"
