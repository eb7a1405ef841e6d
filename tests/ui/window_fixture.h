#pragma once

#include "app/app_block_store.h"
#include "fakes/fake_platform.h"
#include "ui/user_interface.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickWindow>

namespace zorvane::tests
{

/** One line of the list, as a test writes it. */
struct SampleApplication {
    QString name;
    QString identifier;
    std::optional<QString> team;
    std::optional<QByteArray> icon;
};

/** When the saved list is read. */
enum class ListRead { BeforeTheFirstFrame, WhenTold };

/** The real windows over a real store on a made-up system. */
class WindowFixture
{
public:
    /** What the menu bar adds to the content's height. */
    static constexpr int menuBarHeight = 26;

    /** On a @p firstLaunch the guide shows by itself. */
    explicit WindowFixture(const QList<SampleApplication> &applications = {},
        bool firstLaunch = false, const ui::DesktopConventions &conventions = {},
        ListRead listRead = ListRead::BeforeTheFirstFrame);

    /** Tells that the saved list be read, and waits for that. */
    void readList();

    /** Lets all work that waits be done, and the scene follow. */
    void settle();

    // Brings the filter into a state, by the way the system gets there.
    void enable();
    void requireInstallation();
    void activate();
    void awaitApproval();
    void fail(const QString &message);
    /** An alert by its usual way: a bundle that nobody signed. */
    void raiseAlert();
    /** The next check for updates is answered by a manifest of this version. */
    void publish(const QString &version, const QString &releaseNotes = {});
    /** A check for updates that the user asked for, answered by a manifest of this version. */
    void checkForUpdates(const QString &version, const QString &releaseNotes = {});
    /** Opens the settings by their keys and waits for them; what follows looks at them. */
    void openSettings();
    /** From here on, the items and texts of this window are looked at. */
    void turnTo(QQuickWindow *other) { m_window = other; }

    /** The one that is looked at; the main window until another is opened. */
    [[nodiscard]] QQuickWindow *window() const { return m_window; }
    /** The item of this object name that shows; null if there is none. */
    [[nodiscard]] QQuickItem *item(const QString &name) const;
    /** The item that shows this text; null if there is none. */
    [[nodiscard]] QQuickItem *text(const QString &text) const;
    /** The visible button with this text or tool tip; null if there is none. */
    [[nodiscard]] QQuickItem *button(const QString &label) const;
    /** All visible items of which @p wanted holds, in the order of drawing. */
    [[nodiscard]] QList<QQuickItem *> items(
        const std::function<bool(const QQuickItem *)> &wanted) const;
    void click(QQuickItem *item) const;
    /** Waits until the panel or label of this name has its full size, and the column its places. */
    [[nodiscard]] bool waitUntilGrown(const QString &name) const;

    FakePlatform platform;
    std::unique_ptr<app::AppBlockStore> store;
    std::unique_ptr<ui::UserInterface> ui;

private:
    void takePlaces() const;

    QQuickWindow *m_window = nullptr;
    std::function<void()> m_heldBack;
};

/** Where an item is, in the coordinates of its window. */
[[nodiscard]] QRectF inWindow(const QQuickItem *item);

/** What assistive technology is told of an item; an empty name and no role if it is told nothing.
 */
[[nodiscard]] QString accessibleName(const QQuickItem *item);
[[nodiscard]] QAccessible::Role accessibleRole(const QQuickItem *item);
/** Does to an item what assistive technology can do to it, e.g. "Press". */
void doAccessibleAction(QQuickItem *item, const QString &action);

/** A stored list with these applications, as the preferences keep it. */
[[nodiscard]] QByteArray storedList(const QList<SampleApplication> &applications);

} // namespace zorvane::tests
