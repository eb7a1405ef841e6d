#include "ui/window_fixture.h"

#include <QColor>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using zorvane::ui::onboardingSteps;

namespace
{

QStringList titles(const QList<zorvane::ui::OnboardingStep> &steps)
{
    QStringList result;
    for (const auto &step : steps)
        result << step.title;
    return result;
}

bool isCompleted(const WindowFixture &fixture)
{
    return fixture.platform.preferences.boolean(u"hasCompletedOnboarding"_s);
}

} // namespace

class TestOnboarding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFreshInstallationSeesFivePages()
    {
        QCOMPARE(titles(onboardingSteps(false, false)),
            (QStringList{u"Welcome to Zorvane"_s, u"Move to Applications"_s,
                u"Turn On Protection"_s, u"Drop In an App"_s, u"You're Ready"_s}));
    }

    void anInstalledAndProtectedProgramSeesThreePages()
    {
        QCOMPARE(titles(onboardingSteps(true, true)),
            (QStringList{u"Welcome to Zorvane"_s, u"Drop In an App"_s, u"You're Ready"_s}));
    }

    void anInstalledProgramWithoutProtectionSeesFourPages()
    {
        QCOMPARE(titles(onboardingSteps(true, false)),
            (QStringList{u"Welcome to Zorvane"_s, u"Turn On Protection"_s, u"Drop In an App"_s,
                u"You're Ready"_s}));
    }

    void thePagesHaveTheirSymbolsAndTexts()
    {
        const QList<zorvane::ui::OnboardingStep> expected{
            {u"shield.lefthalf.filled"_s, u"Welcome to Zorvane"_s,
                u"A simple, private way to stop selected apps from accessing the internet. Network "
                "decisions happen locally on your Mac."_s},
            {u"arrow.down.app.fill"_s, u"Move to Applications"_s,
                u"Before turning on protection, drag Zorvane into your Mac's Applications folder "
                "and open it from there. The installer window makes this a single drag."_s},
            {u"switch.2"_s, u"Turn On Protection"_s,
                u"Use the switch in the top-right corner. If macOS needs approval, Zorvane will "
                "show the exact steps and a button to open System Settings."_s},
            {u"app.dashed"_s, u"Drop In an App"_s,
                u"Drag any .app from Finder into Zorvane. Its embedded helpers are added "
                "automatically. Expand the app's network-process list to see helpers and "
                "background services as they are detected."_s},
            {u"questionmark.circle"_s, u"You're Ready"_s,
                u"Remove an app from the list whenever you want to restore access. Use the "
                "question mark in the header to view this guide again."_s}};
        QCOMPARE(onboardingSteps(false, false), expected);
    }

    void theFirstLaunchShowsTheGuide()
    {
        const WindowFixture fixture({}, true);
        QVERIFY(fixture.item(u"onboarding"_s) != nullptr);
        QVERIFY(fixture.text(u"Welcome to Zorvane"_s) != nullptr);
        QVERIFY(!fixture.button(u"Back"_s)->isEnabled());
        const auto *const square = fixture.item(u"onboardingSquare"_s);
        QCOMPARE(square->size(), QSizeF(100, 100));
        QCOMPARE(square->property("radius").toReal(), 26.0);
        QCOMPARE(
            square->property("color").value<QColor>(), QColor::fromRgbF(0, 0x7a / 255.F, 1, 0.1F));
        QCOMPARE(fixture.item(u"onboardingMessage"_s)->width(), 420.0);
    }

    void laterLaunchesDoNot()
    {
        const WindowFixture fixture;
        QCOMPARE(fixture.item(u"onboarding"_s), nullptr);
    }

    void skippingCompletesItFromAnyPage_data()
    {
        QTest::addColumn<int>("page");
        QTest::newRow("the first") << 0;
        QTest::newRow("the second") << 1;
        QTest::newRow("the last") << 3;
    }

    void skippingCompletesItFromAnyPage()
    {
        QFETCH(int, page);
        WindowFixture fixture({}, true);
        QTRY_COMPARE(fixture.item(u"onboarding"_s)->opacity(), 1.0);
        for (int at = 0; at < page; ++at)
            fixture.click(fixture.button(u"Continue"_s));
        QCOMPARE(
            fixture.button(u"Skip"_s)->property("toolTip").toString(), u"Close the tutorial"_s);
        fixture.click(fixture.button(u"Skip"_s));
        QVERIFY(isCompleted(fixture));
        QTRY_COMPARE(fixture.item(u"onboarding"_s), nullptr);
    }

    void theLastPageFinishesOnce()
    {
        WindowFixture fixture({}, true);
        QTRY_COMPARE(fixture.item(u"onboarding"_s)->opacity(), 1.0);
        for (int at = 0; at < 3; ++at) {
            QCOMPARE(fixture.button(u"Get Started"_s), nullptr);
            fixture.click(fixture.button(u"Continue"_s));
        }
        QCOMPARE(fixture.button(u"Continue"_s), nullptr);
        fixture.platform.preferences.written.clear();
        fixture.click(fixture.button(u"Get Started"_s));
        QCOMPARE(fixture.platform.preferences.written, QStringList{u"hasCompletedOnboarding"_s});
        QTRY_COMPARE(fixture.item(u"onboarding"_s), nullptr);
        QCOMPARE(fixture.platform.preferences.written.size(), 1);
    }

    void backGoesBack()
    {
        WindowFixture fixture({}, true);
        QTRY_COMPARE(fixture.item(u"onboarding"_s)->opacity(), 1.0);
        fixture.click(fixture.button(u"Continue"_s));
        QTRY_COMPARE(fixture.text(u"Welcome to Zorvane"_s), nullptr);
        fixture.click(fixture.button(u"Back"_s));
        QTRY_VERIFY(fixture.text(u"Welcome to Zorvane"_s) != nullptr);
        QVERIFY(!fixture.button(u"Back"_s)->isEnabled());
    }

    void aMarkShowsThePage()
    {
        WindowFixture fixture({}, true);
        const auto widths = [&] {
            QList<qreal> result;
            for (const auto *const mark : fixture.items(
                     [](const QQuickItem *item) { return item->objectName() == u"pageMark"; }))
                result << mark->width();
            return result;
        };
        QCOMPARE(widths(), (QList<qreal>{22, 7, 7, 7}));
        QTRY_COMPARE(fixture.item(u"onboarding"_s)->opacity(), 1.0);
        fixture.click(fixture.button(u"Continue"_s));
        QTRY_COMPARE(widths(), (QList<qreal>{7, 22, 7, 7}));
    }

    void escapePutsItAwayUnfinished()
    {
        WindowFixture fixture({}, true);
        QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
        QTest::keyClick(fixture.window(), Qt::Key_Escape);
        QVERIFY(!isCompleted(fixture));
        QTRY_COMPARE(fixture.item(u"onboarding"_s), nullptr);
    }

    void theHelpButtonShowsItAgainFromTheFirstPage()
    {
        WindowFixture fixture;
        fixture.enable();
        auto *const help = fixture.button(u"Show getting started"_s);
        QCOMPARE(help->size(), QSizeF(28, 28));
        fixture.click(help);
        QVERIFY(fixture.text(u"Welcome to Zorvane"_s) != nullptr);
        QCOMPARE(fixture.ui->onboarding().steps().size(), 3);
        QTRY_COMPARE(fixture.item(u"onboarding"_s)->opacity(), 1.0);
        fixture.click(fixture.button(u"Skip"_s));
        QVERIFY(isCompleted(fixture));
    }

    void nothingBehindItCanBeUsed()
    {
        WindowFixture fixture({}, true);
        QTRY_COMPARE(fixture.item(u"onboarding"_s)->opacity(), 1.0);
        fixture.click(fixture.item(u"protectionSwitch"_s));
        fixture.settle();
        QVERIFY(fixture.platform.systemExtensions.submitted.isEmpty());
    }

    void shownAgainWhileItFadesAwayItBeginsWithItsFirstPage_data()
    {
        QTest::addColumn<bool>("isEnabledMeanwhile");
        QTest::newRow("with the same pages") << false;
        QTest::newRow("with fewer pages") << true;
    }

    void shownAgainWhileItFadesAwayItBeginsWithItsFirstPage()
    {
        QFETCH(bool, isEnabledMeanwhile);
        QTest::failOnWarning(QRegularExpression(u"TypeError"_s));
        WindowFixture fixture({}, true);
        auto *const guide = fixture.item(u"onboarding"_s);
        QTRY_COMPARE(guide->opacity(), 1.0);
        for (int page = 1; page < 4; ++page)
            fixture.click(fixture.button(u"Continue"_s));
        QCOMPARE(accessibleName(guide), u"You're Ready"_s);
        if (isEnabledMeanwhile)
            fixture.enable();
        fixture.ui->onboarding().close();
        fixture.ui->onboarding().show();
        QCOMPARE(fixture.item(u"onboarding"_s), guide);
        QCOMPARE(fixture.ui->onboarding().steps().size(), isEnabledMeanwhile ? 3 : 4);
        QCOMPARE(accessibleName(guide), u"Welcome to Zorvane"_s);
        QVERIFY(!fixture.button(u"Back"_s)->isEnabled());
    }
};

QTEST_MAIN(TestOnboarding)
#include "tst_onboarding.moc"
