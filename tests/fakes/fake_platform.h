#pragma once

#include "fakes/fake_filter.h"
#include "fakes/fake_scheduler.h"
#include "fakes/fake_services.h"
#include "fakes/fake_updates.h"
#include "platform/platform.h"

namespace zorvane::tests
{

/** A whole made-up system, with typed access to its parts. */
class FakePlatform
{
public:
    FakePlatform();

    /** Puts a signed bundle without helpers on the made-up disk. */
    void addBundle(const QString &path, const QString &identifier,
        const std::optional<QString> &team = std::nullopt, const QString &name = {});

    platform::Platform ports;
    FakeScheduler &scheduler;
    FakeLog &log;
    FakePreferences &preferences;
    FakeSuites &suites;
    FakeSignatures &signatures;
    FakeBundles &bundles;
    FakeWalk &walk;
    FakeIcons &icons;
    FakeMainBundle &mainBundle;
    FakeEntitlements &entitlements;
    FakeFilterManager &filterManager;
    FakeSystemExtensions &systemExtensions;
    FakeActions &actions;
    FakeFileAccess &fileAccess;
    FakeMotion &motion;
    FakeManifestFetcher &manifestFetcher;
    FakeUserNotifications &notifications;
};

} // namespace zorvane::tests
