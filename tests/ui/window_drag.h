#pragma once

#include "ui/window_fixture.h"

#include <QDragEnterEvent>
#include <QMimeData>

namespace zorvane::tests
{

/** One drag from another program, as the window is told of it; over the drop zone's middle. */
class WindowDrag
{
public:
    WindowDrag(const WindowFixture &fixture, const QStringList &paths)
        : m_fixture(fixture)
        , m_place(centre(fixture))
    {
        QList<QUrl> urls;
        for (const auto &path : paths)
            urls.append(QUrl::fromLocalFile(path));
        m_data.setUrls(urls);
    }

    static QPoint centre(const WindowFixture &fixture)
    {
        const auto *const zone = fixture.item(QStringLiteral("dropZone"));
        return zone->mapToScene(QPointF(zone->width() / 2, zone->height() / 2)).toPoint();
    }

    void moveTo(const QPoint &place) { m_place = place; }

    /** As the system tells it: entering is followed by a first move. */
    bool enter()
    {
        QDragEnterEvent event(m_place, offered, &m_data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_fixture.window(), &event);
        return move();
    }

    bool move()
    {
        QDragMoveEvent event(m_place, offered, &m_data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_fixture.window(), &event);
        return event.isAccepted();
    }

    void leave()
    {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(m_fixture.window(), &event);
    }

    /** The action that was taken; IgnoreAction if the drop was refused. */
    Qt::DropAction drop()
    {
        QDropEvent event(m_place, offered, &m_data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_fixture.window(), &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }

private:
    static constexpr Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;

    const WindowFixture &m_fixture;
    QPoint m_place;
    QMimeData m_data;
};

} // namespace zorvane::tests
