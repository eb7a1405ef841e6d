#include "ui/onboarding.h"

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

namespace
{

const QString completedKey = u"hasCompletedOnboarding"_s;

} // namespace

QList<OnboardingStep> onboardingSteps(bool isInApplicationsFolder, bool isProtectionEnabled)
{
    QList<OnboardingStep> steps{{u"shield.lefthalf.filled"_s, u"Welcome to Zorvane"_s,
        u"A simple, private way to stop selected apps from accessing the internet. Network "
        "decisions happen locally on your Mac."_s}};
    if (!isInApplicationsFolder)
        steps.append({u"arrow.down.app.fill"_s, u"Move to Applications"_s,
            u"Before turning on protection, drag Zorvane into your Mac's Applications folder and "
            "open it from there. The installer window makes this a single drag."_s});
    if (!isProtectionEnabled)
        steps.append({u"switch.2"_s, u"Turn On Protection"_s,
            u"Use the switch in the top-right corner. If macOS needs approval, Zorvane will show "
            "the exact steps and a button to open System Settings."_s});
    steps.append({u"app.dashed"_s, u"Drop In an App"_s,
        u"Drag any .app from Finder into Zorvane. Its embedded helpers are added automatically. "
        "Expand the app's network-process list to see helpers and background services as they are "
        "detected."_s});
    steps.append({u"questionmark.circle"_s, u"You're Ready"_s,
        u"Remove an app from the list whenever you want to restore access. Use the question mark "
        "in the header to view this guide again."_s});
    return steps;
}

Onboarding::Onboarding(const app::AppBlockStore &store, platform::Preferences &preferences)
    : m_store(store)
    , m_preferences(preferences)
{
}

QVariantList Onboarding::stepsForViews() const
{
    QVariantList result;
    for (const auto &step : m_steps)
        result.append(QVariant::fromValue(step));
    return result;
}

bool Onboarding::hasCompletedOnboarding() const
{
    return m_preferences.boolean(completedKey);
}

void Onboarding::mainWindowAppeared()
{
    if (!hasCompletedOnboarding())
        show();
}

void Onboarding::show()
{
    if (m_showingOnboarding)
        return;
    m_steps = onboardingSteps(m_store.filterController()->isRunningFromApplicationsFolder(),
        m_store.isProtectionEnabled());
    Q_EMIT stepsChanged();
    setShowing(true);
}

void Onboarding::finish()
{
    m_preferences.setBoolean(completedKey, true);
    setShowing(false);
}

void Onboarding::close()
{
    setShowing(false);
}

void Onboarding::setShowing(bool showing)
{
    if (m_showingOnboarding == showing)
        return;
    m_showingOnboarding = showing;
    Q_EMIT showingOnboardingChanged();
}

} // namespace zorvane::ui
