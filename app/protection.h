#pragma once

#include "app/blocked_list.h"
#include "filter/filter_controller.h"
#include "platform/main_bundle.h"
#include "platform/preferences.h"

#include <memory>
#include <optional>
#include <QObject>
#include <QString>
#include <QStringList>

namespace zorvane::app
{

/**
 * The store's protection side: remembers whether the user wants the filter on, and decides which
 * operation of the filter controller each change calls for. Main thread.
 */
class Protection final : public QObject
{
public:
    /** What it works with; all outlive it. */
    struct Services {
        platform::Preferences &preferences;
        platform::MainBundle &mainBundle;
        const BlockedList &list;
    };

    Protection(
        std::shared_ptr<filter::FilterController> filterController, const Services &services);

    [[nodiscard]] bool isEnabled() const;
    /** Keeps the user's wish and asks the filter for it; isEnabled() follows when it is so. */
    void setEnabled(bool on);

    /** Why the switch cannot be used now; nothing if there is nothing to explain. */
    [[nodiscard]] std::optional<QString> explanationWhyUnavailable() const;

    /** Brings the filter's state up to date, or asks again while an approval is awaited. */
    void refresh();

    /** The saved list is there: the filter hears of it for the first time. */
    void listLoaded();
    /** Hands the rules over whatever the filter's state. */
    void applyRules();
    /** Hands the rules over if the filter is on. */
    void applyRulesIfEnabled();

    [[nodiscard]] QStringList codeIdentityKeys() const;
    [[nodiscard]] QStringList applicationPaths() const;

private:
    void statusAnnounced();
    [[nodiscard]] std::optional<bool> wishFromStatus() const;
    void reconcile();

    std::shared_ptr<filter::FilterController> m_filterController;
    Services m_services;
    /** The user switched before the saved list was there. */
    bool m_wishWaitsForList = false;
};

} // namespace zorvane::app
