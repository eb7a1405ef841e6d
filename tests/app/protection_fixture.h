#pragma once

#include "app/app_block_store.h"
#include "app/records/blocked_application_json.h"
#include "fakes/fake_platform.h"
#include "sample_applications.h"

#include <memory>
#include <optional>

namespace zorvane::tests
{

inline const QString wishKey = QStringLiteral("protectionRequested");

/** A store with a saved list, and the filter that it switches. */
struct ProtectionFixture {
    FakePlatform system;
    std::unique_ptr<app::AppBlockStore> store;

    explicit ProtectionFixture(const QList<records::BlockedApplication> &stored = {},
        std::optional<bool> wish = std::nullopt)
    {
        system.preferences.values.insert(
            QStringLiteral("blockedApplications"), records::encodedApplications(stored));
        if (wish)
            system.preferences.values.insert(wishKey, *wish);
    }

    void start()
    {
        store = std::make_unique<app::AppBlockStore>(system.ports);
        system.scheduler.settle();
    }

    void finishActivation()
    {
        system.systemExtensions.delegate()->requestDidFinish(platform::ActivationResult::Completed);
        system.scheduler.settle();
    }

    /** What the filter would block now. */
    [[nodiscard]] QStringList writtenKeys() const
    {
        const auto &provider = system.filterManager.stored.provider;
        return provider ? provider->vendorConfiguration.at(QStringLiteral("blockedCodeIdentities"))
                        : QStringList{QStringLiteral("nothing written")};
    }

    [[nodiscard]] qsizetype activations() const { return system.systemExtensions.submitted.size(); }
    [[nodiscard]] std::optional<bool> wish() const
    {
        return system.preferences.contains(wishKey)
            ? std::optional(system.preferences.boolean(wishKey))
            : std::nullopt;
    }
};

inline const auto tool
    = sampleApplication(QStringLiteral("Tool"), QStringLiteral("com.example.Tool"));
inline const QStringList toolKeys{
    records::identityKey({QStringLiteral("com.example.Tool"), QStringLiteral("TEAM")})};

} // namespace zorvane::tests
