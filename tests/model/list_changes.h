#pragma once

#include "app/records/blocked_application.h"

#include <QList>
#include <QString>

namespace zorvane::tests
{

/** Watches the shown list: each change has to be one of those that a list may go through. */
class ListChanges
{
public:
    explicit ListChanges(const QList<records::BlockedApplication> &stored = {});

    /** The list is another now. Returns the name of what happened to it. */
    QString changed(const QList<records::BlockedApplication> &list);

    [[nodiscard]] const QList<records::BlockedApplication> &shown() const { return m_shown; }
    /** What was wrong with a change; empty if nothing was. */
    [[nodiscard]] const QString &broken() const { return m_broken; }

private:
    void taken(const QList<records::BlockedApplication> &list);
    void grown(const QList<records::BlockedApplication> &list);
    QString renewed(const QList<records::BlockedApplication> &list);

    QList<records::BlockedApplication> m_stored;
    QList<records::BlockedApplication> m_shown;
    bool m_isLoaded = false;
    QString m_broken;
};

} // namespace zorvane::tests
