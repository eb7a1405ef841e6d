#pragma once

#include "ui/window_fixture.h"

#include <memory>

/**
 * @file
 * The windows in each state that they are made for, come to rest: what moves has moved. Reached the
 * way that the program gets there.
 */
namespace zorvane::tests::states
{

using Window = std::unique_ptr<WindowFixture>;

[[nodiscard]] Window empty();
/** Two applications, of one network process and of three; the lines of the second show. */
[[nodiscard]] Window listed();
[[nodiscard]] Window enabled();
[[nodiscard]] Window activating();
[[nodiscard]] Window failed();
/** A release without notes is offered. */
[[nodiscard]] Window updated();
[[nodiscard]] Window installationRequired();
/** The same, with a newer release on offer: two panels. */
[[nodiscard]] Window installationRequiredAndUpdated();
[[nodiscard]] Window awaitingApproval();
/** The same, with a newer release on offer. */
[[nodiscard]] Window awaitingApprovalAndUpdated();
[[nodiscard]] Window dropHovering();
[[nodiscard]] Window adding();
[[nodiscard]] Window alerted();
/** The guide of a fresh installation, five pages long, at this page. */
[[nodiscard]] Window guide(int page);
[[nodiscard]] Window menu();
/** The settings of version 1.2 (7) after a check that found nothing. */
[[nodiscard]] Window settings();
/** The same after a check that found 1.3. */
[[nodiscard]] Window settingsWithUpdate();
/** The settings of a program that has to be moved first. */
[[nodiscard]] Window settingsMisplaced();

} // namespace zorvane::tests::states
