#include "fakes/fake_platform.h"

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

namespace
{

template <typename Fake, typename Port, typename... Arguments>
Fake &install(std::unique_ptr<Port> &port, Arguments &&...arguments)
{
    auto fake = std::make_unique<Fake>(std::forward<Arguments>(arguments)...);
    Fake &result = *fake;
    port = std::move(fake);
    return result;
}

} // namespace

FakePlatform::FakePlatform()
    : scheduler(install<FakeScheduler>(ports.scheduler))
    , log(install<FakeLog>(ports.log))
    , preferences(install<FakePreferences>(ports.preferences))
    , suites(install<FakeSuites>(ports.suites))
    , signatures(install<FakeSignatures>(ports.signatures))
    , bundles(install<FakeBundles>(ports.bundles))
    , walk(install<FakeWalk>(ports.walk))
    , icons(install<FakeIcons>(ports.icons))
    , mainBundle(install<FakeMainBundle>(ports.mainBundle))
    , entitlements(install<FakeEntitlements>(ports.entitlements))
    , filterManager(install<FakeFilterManager>(ports.filterManager, scheduler))
    , systemExtensions(install<FakeSystemExtensions>(ports.systemExtensions))
    , actions(install<FakeActions>(ports.actions))
    , fileAccess(install<FakeFileAccess>(ports.fileAccess))
    , motion(install<FakeMotion>(ports.motion))
    , manifestFetcher(install<FakeManifestFetcher>(ports.manifestFetcher, scheduler))
    , notifications(install<FakeUserNotifications>(ports.notifications, scheduler))
{
}

void FakePlatform::addBundle(const QString &path, const QString &identifier,
    const std::optional<QString> &team, const QString &name)
{
    QVariantMap information{{u"CFBundleIdentifier"_s, identifier}};
    if (!name.isEmpty())
        information.insert(u"CFBundleName"_s, name);
    bundles.information.insert(path, information);
    signatures.signatures.insert(path, {identifier, team});
}

} // namespace zorvane::tests
