#pragma once

#include <QObject>
#include <QString>

namespace zorvane::filter
{

/** What the content filter is doing, as one closed value. */
class FilterStatus
{
    Q_GADGET
    Q_PROPERTY(zorvane::filter::FilterStatus::Kind kind READ kind CONSTANT)
    Q_PROPERTY(QString message READ message CONSTANT)

public:
    enum class Kind {
        Failed, ///< the last step failed, message() says why
        Inactive, ///< the configuration is not enabled, or nothing is known yet
        InstallationRequired, ///< the program does not run from the Applications folder
        Activating, ///< an activation request was submitted and has not been answered
        AwaitingApproval, ///< the user has to allow the extension or the filter
        Enabled, ///< the configuration is saved and enabled
    };
    Q_ENUM(Kind)

    FilterStatus() = default;
    /** Any kind but Failed, which needs its text. */
    FilterStatus(Kind kind); // NOLINT(google-explicit-constructor): a kind is a status
    [[nodiscard]] static FilterStatus failed(const QString &message);

    [[nodiscard]] Kind kind() const { return m_kind; }
    /** The text for the user; empty unless the kind is Failed. */
    [[nodiscard]] QString message() const { return m_message; }

    friend bool operator==(const FilterStatus &, const FilterStatus &) = default;

private:
    Kind m_kind = Kind::Inactive;
    QString m_message;
};

} // namespace zorvane::filter
