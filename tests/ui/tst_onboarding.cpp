#include "ui/window_fixture.h"

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

    void aMisplacedProgramWithProtectionSeesFourPages()
    {
        QCOMPARE(titles(onboardingSteps(false, true)),
            (QStringList{u"Welcome to Zorvane"_s, u"Move to Applications"_s, u"Drop In an App"_s,
                u"You're Ready"_s}));
    }

    void theFirstLaunchShowsTheGuide()
    {
        const WindowFixture fixture({}, true);
        QVERIFY(fixture.item(u"onboarding"_s) != nullptr);
        QVERIFY(fixture.text(u"Welcome to Zorvane"_s) != nullptr);
        QVERIFY(!fixture.button(u"Back"_s)->isEnabled());
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

    void itIsCompletedBeforeItCloses()
    {
        const WindowFixture fixture({}, true);
        auto &onboarding = fixture.ui->onboarding();
        QList<bool> completed;
        connect(&onboarding, &zorvane::ui::Onboarding::showingOnboardingChanged, this,
            [&] { completed << isCompleted(fixture); });
        onboarding.finish();
        QCOMPARE(completed, QList{true});
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
        fixture.click(fixture.button(u"Show getting started"_s));
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
