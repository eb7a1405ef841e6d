#pragma once

#include <memory>
#include <mutex>
#include <QTest>
#include <tuple>

namespace zorvane::tests
{

/** What a port answers by a completion that takes these values, on any thread. */
template <typename... Values>
class Answer
{
public:
    /** The completion, which may live longer than this. */
    [[nodiscard]] auto receiver() const
    {
        return [state = m_state](const Values &...values) {
            const std::lock_guard lock(state->mutex);
            state->values = {values...};
            ++state->count;
        };
    }

    [[nodiscard]] int count() const
    {
        const std::lock_guard lock(m_state->mutex);
        return m_state->count;
    }

    /** Waits for an answer, and a moment for one too many. */
    [[nodiscard]] bool comesOnce() const
    {
        const bool came = QTest::qWaitFor([this] { return count() > 0; }, 30'000);
        QTest::qWait(100);
        return came && count() == 1;
    }

    /** Of the last answer. */
    template <std::size_t place = 0>
    [[nodiscard]] auto value() const
    {
        const std::lock_guard lock(m_state->mutex);
        return std::get<place>(m_state->values);
    }

private:
    struct State {
        std::mutex mutex;
        int count = 0;
        std::tuple<Values...> values;
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace zorvane::tests
