#pragma once

#include "platform/bundles.h"

#include <QStringList>

namespace zorvane::platform::simulated
{

/** Reads bundles from their files, by the rules of the system that they are made for. */
class FileBundles final : public Bundles
{
public:
    /** @p languages: those that the program speaks, the preferred one first. */
    explicit FileBundles(QStringList languages);

    [[nodiscard]] std::unique_ptr<Bundle> open(const std::filesystem::path &path) const override;

private:
    QStringList m_languages;
};

} // namespace zorvane::platform::simulated
