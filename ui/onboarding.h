#pragma once

#include "app/app_block_store.h"
#include "platform/preferences.h"

#include <QList>
#include <QObject>
#include <qqmlregistration.h>
#include <QString>

namespace zorvane::ui
{

/** One page of the guide. */
struct OnboardingStep {
    Q_GADGET
    QML_VALUE_TYPE(onboardingStep)
    Q_PROPERTY(QString symbol MEMBER symbol CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString message MEMBER message CONSTANT)

public:
    /** Name of the symbol at the top of the page. */
    QString symbol;
    QString title;
    QString message;

    friend bool operator==(const OnboardingStep &, const OnboardingStep &) = default;
};

/** The pages that someone needs who has come this far. */
[[nodiscard]] QList<OnboardingStep> onboardingSteps(
    bool isInApplicationsFolder, bool isProtectionEnabled);

/**
 * Whether the guide shows, and what it says. Shows by itself until it has been finished once, which
 * the preferences remember. Main thread; what it is given outlives it.
 */
class Onboarding final : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(bool showingOnboarding READ showingOnboarding NOTIFY showingOnboardingChanged)
    Q_PROPERTY(QVariantList steps READ stepsForViews NOTIFY stepsChanged)

public:
    Onboarding(const app::AppBlockStore &store, platform::Preferences &preferences);

    [[nodiscard]] bool showingOnboarding() const { return m_showingOnboarding; }
    /** Those of the latest presentation. */
    [[nodiscard]] const QList<OnboardingStep> &steps() const { return m_steps; }
    [[nodiscard]] QVariantList stepsForViews() const;
    [[nodiscard]] bool hasCompletedOnboarding() const;

    /** The main window has come on screen. */
    void mainWindowAppeared();
    /** Shows the guide from its first page, made for how things stand now. */
    Q_INVOKABLE void show();
    /** The user has seen enough: it does not show by itself again. */
    Q_INVOKABLE void finish();
    /** Puts the guide away unfinished. */
    Q_INVOKABLE void close();

Q_SIGNALS:
    void showingOnboardingChanged();
    void stepsChanged();

private:
    void setShowing(bool showing);

    const app::AppBlockStore &m_store;
    platform::Preferences &m_preferences;
    QList<OnboardingStep> m_steps;
    bool m_showingOnboarding = false;
};

} // namespace zorvane::ui
