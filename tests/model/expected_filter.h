#pragma once

#include "filter/filter_status.h"
#include "model/known_errors.h"
#include "platform/system_extensions.h"

#include <chrono>
#include <deque>
#include <optional>
#include <QList>
#include <QStringList>
#include <utility>
#include <variant>

namespace zorvane::tests
{

/** Rules in the form in which they are kept and sent. */
struct Rules {
    QStringList keys;
    QStringList paths;

    friend bool operator==(const Rules &, const Rules &) = default;
};

/**
 * What the filter controller has to do, told a second time and as plainly as its rules are stated:
 * every event with the status and the calls that follow from it. The system's answers wait here in
 * the same order as in the made-up system, what crosses to the main thread likewise.
 */
class ExpectedFilter
{
public:
    /** The filter's configuration, stored or in the program's copy. */
    struct Configuration {
        bool enabled = false;
        bool written = false;
        Rules rules;
        QString extension;
        friend bool operator==(const Configuration &, const Configuration &) = default;
    };

    // What the program asks for.
    void refreshStatus(const std::optional<Rules> &rules);
    void requestActivation(const Rules &rules);
    void applyRules(const Rules &rules);
    void disableFilter();

    // What the system does.
    /** Lets an answer go, or repeats it. */
    void answer(qsizetype position);
    void repeat(qsizetype position);
    void needApproval() { m_posted.emplace_back(NeedsApproval{}); }
    void finish(platform::ActivationResult result) { m_posted.emplace_back(result); }
    void fail(const KnownError &error) { m_posted.emplace_back(ActivationError{error}); }
    void runFirstPosted();
    /** Time passes; retries that fall due are made. */
    void pass(std::chrono::milliseconds duration);

    [[nodiscard]] qsizetype waiting() const { return m_waiting.size(); }
    [[nodiscard]] qsizetype answered() const { return m_answered.size(); }
    [[nodiscard]] qsizetype posted() const { return qsizetype(m_posted.size()); }

    // How the system is.
    bool isInApplications = true;
    QString extension;
    Configuration stored;
    std::deque<KnownError> loadErrors;
    std::deque<KnownError> saveErrors;

    // What is to be seen.
    filter::FilterStatus status;
    int announcements = 0;
    int loads = 0;
    int saves = 0;
    int submissions = 0;
    bool hasRequest = false;
    Configuration copy;
    /** What the last write is to leave stored; nothing if there was none or it failed. */
    std::optional<Rules> newest;

    // How often the rarer rules were needed.
    int retries = 0;
    int lastRetriesFailed = 0;
    int staleAnswers = 0;

private:
    struct Write {
        int generation = 0;
        Rules rules;
        QString extension;
        std::optional<bool> enabled;
        int attempt = 0;
    };
    struct Call {
        enum class Kind { RefreshLoad, WriteLoad, Save } kind = Kind::RefreshLoad;
        std::optional<KnownError> error;
        std::optional<Rules> rules;
        Write write;
    };
    struct NeedsApproval {
    };
    struct ActivationError {
        KnownError error;
    };
    using Event = std::variant<Call, NeedsApproval, platform::ActivationResult, ActivationError>;

    void setStatus(const filter::FilterStatus &value);
    void setStatus(const KnownError &error);
    void load(Call call);
    void startWrite(std::optional<bool> enabled);
    void retry(Write write);
    void happen(const Call &call);
    void happen(NeedsApproval);
    void happen(platform::ActivationResult result);
    void happen(const ActivationError &failure);
    void refreshed(const Call &call);
    void loadedForWrite(const Call &call);
    void saved(const Call &call);

    Rules m_pending;
    int m_generation = 0;
    std::chrono::milliseconds m_elapsed{0};
    QList<Call> m_waiting;
    QList<Call> m_answered;
    std::deque<Event> m_posted;
    std::deque<std::pair<std::chrono::milliseconds, Write>> m_retries;
};

} // namespace zorvane::tests
