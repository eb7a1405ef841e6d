#pragma once

#include "ui/window_fixture.h"

#include <QTest>

namespace zorvane::tests
{

using namespace Qt::StringLiterals;

/** The main window, with its menu. */
struct MenuFixture : WindowFixture {
    explicit MenuFixture(const QList<SampleApplication> &applications = {})
        : WindowFixture(applications)
    {
        if (!QTest::qWaitForWindowActive(window()))
            qFatal("the main window is not active");
    }

    [[nodiscard]] QQuickItem *menu() const { return item(u"menu"_s); }

    /** The menu's commands from top to bottom. */
    [[nodiscard]] QList<QQuickItem *> commands() const
    {
        return items([](const QQuickItem *item) {
            return item->metaObject()->indexOfSignal("triggered()") >= 0;
        });
    }

    [[nodiscard]] QQuickItem *command(const QString &text) const
    {
        const auto all = commands();
        const auto found = std::find_if(all.cbegin(), all.cend(),
            [&](const QQuickItem *item) { return item->property("text") == text; });
        return found == all.cend() ? nullptr : *found;
    }

    /** What the keyboard is on. */
    [[nodiscard]] QString chosen() const { return accessibleName(window()->activeFocusItem()); }

    void openByMouse() const { click(item(u"menuTitle"_s)); }

    void key(Qt::Key key) const { QTest::keyClick(window(), key); }
};

} // namespace zorvane::tests
