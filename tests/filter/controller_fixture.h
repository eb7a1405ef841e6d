#pragma once

#include "app/records/code_identity.h"
#include "fakes/fake_filter.h"
#include "fakes/fake_scheduler.h"
#include "fakes/fake_services.h"
#include "filter/filter_controller.h"

namespace zorvane::tests
{

/** A filter controller on a made-up system. */
struct ControllerFixture {
    FakeScheduler scheduler;
    FakeLog log;
    FakeMainBundle mainBundle;
    FakeFilterManager manager{scheduler};
    FakeSystemExtensions extensions;
    std::shared_ptr<filter::FilterController> controller
        = std::make_shared<filter::FilterController>(
            filter::FilterController::Services{scheduler, log, mainBundle, manager, extensions});

    [[nodiscard]] QStringList storedKeys() const
    {
        return vendorList(QStringLiteral("blockedCodeIdentities"));
    }
    [[nodiscard]] QStringList storedPaths() const
    {
        return vendorList(QStringLiteral("blockedApplicationPaths"));
    }

    [[nodiscard]] QStringList vendorList(const QString &key) const
    {
        if (!manager.stored.provider)
            return {QStringLiteral("no configuration")};
        return manager.stored.provider->vendorConfiguration.at(key);
    }

    /** Lets the system finish the outstanding activation. */
    void finishActivation(platform::ActivationResult result = platform::ActivationResult::Completed)
    {
        extensions.delegate()->requestDidFinish(result);
        scheduler.settle();
    }

    void failActivation(const platform::PlatformError &error)
    {
        extensions.delegate()->requestDidFail(error);
        scheduler.settle();
    }

    void needApproval()
    {
        extensions.delegate()->requestNeedsUserApproval();
        scheduler.settle();
    }
};

inline const platform::PlatformError permissionDenied{
    QStringLiteral("NEFilterErrorDomain"), 5, QStringLiteral("not yet")};
inline const platform::PlatformError authorizationRequired{
    QStringLiteral("OSSystemExtensionErrorDomain"), 13, QStringLiteral("ask the user")};
inline const platform::PlatformError brokenDisk{
    QStringLiteral("NSCocoaErrorDomain"), 640, QStringLiteral("The disk is full.")};

inline QString testKey(const QString &identifier)
{
    return records::identityKey({identifier, QStringLiteral("TEAM")});
}

} // namespace zorvane::tests
