// Every event of the filter machinery, and the status that it leads to.

#include "controller_fixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using filter::FilterStatus;
using platform::ActivationResult;
using platform::PlatformError;
using Kind = FilterStatus::Kind;

namespace
{

const auto nothing = [](ControllerFixture &) {};

void moveAway(ControllerFixture &f)
{
    f.mainBundle.path = "/tmp/Zorvane.app";
}

void refresh(ControllerFixture &f)
{
    f.controller->refreshStatus();
    f.scheduler.settle();
}

void request(ControllerFixture &f)
{
    f.controller->requestActivation({}, {});
    f.scheduler.settle();
}

void requestAndNeedApproval(ControllerFixture &f)
{
    request(f);
    f.needApproval();
}

void applyRules(ControllerFixture &f)
{
    f.controller->applyRules({}, {});
    f.scheduler.settle();
}

auto failing(const PlatformError &error)
{
    return [error](ControllerFixture &f) { f.failActivation(error); };
}

auto finishing(ActivationResult result)
{
    return [result](ControllerFixture &f) { f.finishActivation(result); };
}

/** A write whose answers come after a newer one has begun. */
void supersededWriteFails(ControllerFixture &f)
{
    f.manager.holdAnswers = true;
    f.manager.loadErrors = {brokenDisk};
    f.controller->applyRules({}, {});
    f.controller->applyRules({}, {});
    f.manager.held.takeFirst()();
    f.scheduler.settle();
}

using Step = std::function<void(ControllerFixture &)>;

struct Transition {
    const char *event;
    Step before;
    Step happens;
    FilterStatus after;
};

} // namespace

class TestFilterTransitions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leadsTo_data()
    {
        QTest::addColumn<int>("row");
        const QList<Transition> rows = transitions();
        for (int i = 0; i < rows.size(); ++i)
            QTest::newRow(rows.at(i).event) << i;
    }

    void leadsTo()
    {
        QFETCH(int, row);
        const Transition transition = transitions().at(row);
        ControllerFixture f;
        transition.before(f);
        transition.happens(f);
        QCOMPARE(f.controller->status().kind(), transition.after.kind());
        QCOMPARE(f.controller->status().message(), transition.after.message());
    }

private:
    static QList<Transition> transitions()
    {
        const auto loadFails = [](const PlatformError &error) {
            return [error](ControllerFixture &f) { f.manager.loadErrors = {error}; };
        };
        const auto saveFails = [](const PlatformError &error) {
            return [error](ControllerFixture &f) { f.manager.saveErrors = {error}; };
        };
        const auto enabled = [](ControllerFixture &f) { f.manager.stored.enabled = true; };
        const FilterStatus failed = FilterStatus::failed(brokenDisk.description);
        const PlatformError misplaced{u"X"_s, 1, u"Move it to /APPLICATIONS please"_s};
        return {
            {"constructed", nothing, nothing, Kind::Inactive},
            {"refresh outside Applications", moveAway, refresh, Kind::InstallationRequired},
            {"refresh finds it enabled", enabled, refresh, Kind::Enabled},
            {"refresh finds it disabled while approval is awaited", requestAndNeedApproval, refresh,
                Kind::AwaitingApproval},
            {"refresh finds it disabled while activating", request, refresh, Kind::Inactive},
            {"refresh finds it disabled with nothing outstanding", nothing, refresh,
                Kind::Inactive},
            {"refresh finds it disabled, approval awaited by a save only",
                [saveFails](ControllerFixture &f) {
                    saveFails(authorizationRequired)(f);
                    applyRules(f);
                },
                refresh, Kind::Inactive},
            {"refresh fails for want of approval", loadFails(permissionDenied), refresh,
                Kind::AwaitingApproval},
            {"refresh fails otherwise", loadFails(brokenDisk), refresh, failed},
            {"activation requested outside Applications", moveAway, request,
                Kind::InstallationRequired},
            {"activation requested", nothing, request, Kind::Activating},
            {"activation requested while one is outstanding", requestAndNeedApproval, request,
                Kind::AwaitingApproval},
            {"extension needs approval", request, [](ControllerFixture &f) { f.needApproval(); },
                Kind::AwaitingApproval},
            {"activation completed and written", request, finishing(ActivationResult::Completed),
                Kind::Enabled},
            {"activation completes after a restart", request,
                finishing(ActivationResult::WillCompleteAfterReboot),
                FilterStatus::failed(u"Restart your Mac to finish installing the extension."_s)},
            {"activation finished in an unknown way", request, finishing(ActivationResult(2)),
                FilterStatus::failed(
                    u"The extension installation finished with an unknown result."_s)},
            {"activation failed outside Applications",
                [](ControllerFixture &f) {
                    request(f);
                    moveAway(f);
                },
                failing(brokenDisk), Kind::InstallationRequired},
            {"activation failed, its text names the folder", request, failing(misplaced),
                Kind::InstallationRequired},
            {"activation failed for want of approval", request, failing(authorizationRequired),
                Kind::AwaitingApproval},
            {"activation failed otherwise", request, failing(brokenDisk), failed},
            {"load before a write failed for want of approval", loadFails(permissionDenied),
                applyRules, Kind::AwaitingApproval},
            {"load before a write failed otherwise", loadFails(brokenDisk), applyRules, failed},
            {"save succeeded, the refresh says how it is", enabled, applyRules, Kind::Enabled},
            {"save failed and will be retried",
                [saveFails](ControllerFixture &f) {
                    request(f);
                    saveFails(permissionDenied)(f);
                },
                applyRules, Kind::Activating},
            {"save failed for want of approval", saveFails(authorizationRequired), applyRules,
                Kind::AwaitingApproval},
            {"save failed otherwise", saveFails(brokenDisk), applyRules, failed},
            {"a superseded write failed", request, supersededWriteFails, Kind::Activating},
        };
    }
};

QTEST_GUILESS_MAIN(TestFilterTransitions)
#include "tst_filter_transitions.moc"
