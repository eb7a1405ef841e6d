#include "answer.h"
#include "own_platform.h"

using namespace Qt::StringLiterals;
using namespace zorvane::platform;
using namespace zorvane::tests;

namespace
{

using Failure = std::optional<PlatformError>;

/** The error that a load, or a save, ends in. */
Failure outcome(FilterManager &manager, void (FilterManager::*call)(FilterManager::Completion))
{
    const Answer<Failure> answer;
    (manager.*call)(answer.receiver());
    if (answer.count() != 0)
        qFatal("The answer came before the call had returned");
    if (!answer.comesOnce())
        qFatal("The manager answered %d times", answer.count());
    return answer.value();
}

/** Whether the filter is on, as a program that begins now reads it. */
bool isStoredEnabled()
{
    const Platform another = makePlatform();
    const Failure failure = outcome(*another.filterManager, &FilterManager::load);
    return !failure && another.filterManager->isEnabled();
}

} // namespace

/** What every system's filter configuration does. A real system lets only an entitled program have
 * one, which a test is not: there the refusal is looked at. */
class TestFilterManagerContract : public QObject
{
    Q_OBJECT

private:
    /** Loads, as is done before every change. */
    static Failure begin(OwnPlatform &platform)
    {
        return outcome(*platform->filterManager, &FilterManager::load);
    }

    static Failure store(FilterManager &manager, bool enabled)
    {
        manager.setLocalizedDescription(u"Zorvane test"_s);
        manager.setProviderConfiguration({.filterSockets = true,
            .filterDataProviderBundleIdentifier = u"dev.kestrelworks.Zorvane.FilterExtension"_s,
            .vendorConfiguration = {{u"blockedApplicationPaths"_s, {u"/Applications/A.app"_s}},
                {u"blockedSigningIdentifiers"_s, {}}}});
        manager.setEnabled(enabled);
        return outcome(manager, &FilterManager::save);
    }

private Q_SLOTS:
    void aLoadIsAnsweredOnceAfterTheCall()
    {
        OwnPlatform platform;
        if (const Failure failure = begin(platform)) {
            QVERIFY(!failure->domain.isEmpty());
            QVERIFY(!failure->description.isEmpty());
        }
    }

    void whatIsSavedIsLoadedByAnother()
    {
        OwnPlatform platform;
        if (const Failure failure = begin(platform))
            QSKIP(qPrintable(u"No filter for a test: "_s + failure->description));
        for (const bool enabled : {true, false}) {
            QCOMPARE(store(*platform->filterManager, enabled), std::nullopt);
            QCOMPARE(platform->filterManager->isEnabled(), enabled);
            QCOMPARE(isStoredEnabled(), enabled);
        }
    }

    void aLoadTakesBackWhatWasNotSaved()
    {
        OwnPlatform platform;
        if (const Failure failure = begin(platform))
            QSKIP(qPrintable(u"No filter for a test: "_s + failure->description));
        QCOMPARE(store(*platform->filterManager, false), std::nullopt);
        platform->filterManager->setEnabled(true);
        QVERIFY(platform->filterManager->isEnabled());
        QVERIFY(!isStoredEnabled());
        QCOMPARE(begin(platform), std::nullopt);
        QVERIFY(!platform->filterManager->isEnabled());
    }

    void nothingIsAnsweredOnceTheManagerIsGone()
    {
        OwnPlatform platform;
        const Answer<Failure> answer;
        platform->filterManager->load(answer.receiver());
        platform->filterManager.reset();
        QTest::qWait(300);
        QCOMPARE(answer.count(), 0);
    }
};

QTEST_GUILESS_MAIN(TestFilterManagerContract)
#include "tst_filter_manager_contract.moc"
