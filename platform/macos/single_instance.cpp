#include "platform/single_instance.h"

#include <QGuiApplication>
#include <utility>

namespace zorvane::platform
{

namespace
{

/**
 * The system itself starts a bundle's program once only: another attempt, by the Dock or the
 * Finder, asks the running one to open again. Qt tells of that by saying once more that the program
 * is active.
 */
class LaunchedInstance final : public QObject, public SingleInstance
{
public:
    [[nodiscard]] Outcome acquire() override
    {
        connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                const auto previous = std::exchange(m_state, state);
                if (state == Qt::ApplicationActive && previous == state && m_bringForward)
                    m_bringForward();
            });
        return Outcome::First;
    }

    void onBringForward(std::function<void()> action) override
    {
        m_bringForward = std::move(action);
    }

private:
    Qt::ApplicationState m_state = Qt::ApplicationInactive;
    std::function<void()> m_bringForward;
};

} // namespace

std::unique_ptr<SingleInstance> makeSingleInstance()
{
    return std::make_unique<LaunchedInstance>();
}

} // namespace zorvane::platform
