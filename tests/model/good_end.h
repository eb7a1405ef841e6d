#pragma once

#include "model/store_world.h"

namespace zorvane::tests
{

/** What a user does when the random steps are over and the system is healthy: each has its effect,
 * whatever happened before. */
class GoodEnd
{
public:
    explicit GoodEnd(StoreWorld &world)
        : m_world(world)
    {
    }

    /** What is wrong; empty if nothing is. */
    [[nodiscard]] QString broken();

private:
    QString settles();
    QString switchesOn();
    QString adds();
    QString takesIn();
    QString removes();
    QString switchesOff();
    QString startsAgain();
    QString activated();
    QString blocked();
    [[nodiscard]] std::optional<records::BlockedApplication> added() const;

    StoreWorld &m_world;
};

} // namespace zorvane::tests
