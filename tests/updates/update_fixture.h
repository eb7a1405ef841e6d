#pragma once

#include "fakes/fake_platform.h"
#include "sample_updates.h"
#include "updates/update_controller.h"

#include <memory>

namespace zorvane::tests
{

inline const QString lastCheckKey = QStringLiteral("updates.lastCheckedAt");
inline const QString cachedManifestKey = QStringLiteral("updates.cachedManifest");
inline const QString failureText = QStringLiteral(
    "Zorvane could not check for updates. Check your internet connection and try again.");

/** A check for updates on a made-up system. */
struct UpdateFixture {
    FakePlatform system;

    [[nodiscard]] std::unique_ptr<updates::UpdateController> controller()
    {
        return std::make_unique<updates::UpdateController>(
            updates::UpdateController::Services{system.scheduler, system.preferences,
                system.mainBundle, system.manifestFetcher, system.actions});
    }

    /** A controller after one check by the user that was answered so. */
    [[nodiscard]] std::unique_ptr<updates::UpdateController> checked(
        const platform::ManifestFetcher::Result &answer)
    {
        auto result = controller();
        check(*result, answer);
        return result;
    }

    void check(updates::UpdateController &target, const platform::ManifestFetcher::Result &answer)
    {
        system.manifestFetcher.answers = {answer};
        target.checkForUpdates(true, true);
        system.scheduler.settle();
    }

    [[nodiscard]] qsizetype fetches() const { return system.manifestFetcher.requests.size(); }
};

/** A manifest of so many bytes. */
inline QByteArray manifestOfSize(qsizetype size)
{
    QByteArray body = updates::encodedUpdate(sampleUpdate(QStringLiteral("2.0")));
    return body + QByteArray(size - body.size(), ' ');
}

} // namespace zorvane::tests
