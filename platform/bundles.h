#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <QString>
#include <QVariant>

namespace zorvane::platform
{

/** A folder read as a bundle. Its information is read once, when it is opened. */
class Bundle
{
public:
    virtual ~Bundle() = default;

    /** The identifier of the information dictionary, untrimmed; nothing if missing or no text. */
    [[nodiscard]] virtual std::optional<QString> identifier() const = 0;

    /**
     * The value under @p key, the localised one if there is one. Invalid if absent; a text is a
     * QString, every other type some other kind of variant.
     */
    [[nodiscard]] virtual QVariant informationValue(const QString &key) const = 0;
};

/** Opens bundles. Safe to use from any thread; blocks on the disk. */
class Bundles
{
public:
    virtual ~Bundles() = default;

    /** The bundle at @p path; nothing if there is no folder there that can be opened and listed. */
    [[nodiscard]] virtual std::unique_ptr<Bundle> open(const std::filesystem::path &path) const = 0;
};

} // namespace zorvane::platform
