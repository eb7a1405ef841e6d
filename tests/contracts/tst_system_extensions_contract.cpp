#include "own_platform.h"

#include <atomic>
#include <mutex>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::platform;
using zorvane::tests::OwnPlatform;

namespace
{

const QString extension = u"dev.kestrelworks.Zorvane.FilterExtension"_s;

/** Keeps what it hears. */
class Listener final : public ActivationDelegate
{
public:
    [[nodiscard]] ReplacementAction actionForReplacingExtension() override
    {
        return ReplacementAction::Replace;
    }
    void requestNeedsUserApproval() override { isLate = isLate || endings > 0; }
    void requestDidFinish(ActivationResult) override { ++endings; }
    void requestDidFail(const PlatformError &failure) override
    {
        {
            const std::lock_guard lock(m_mutex);
            m_error = failure;
        }
        ++endings;
    }

    [[nodiscard]] std::optional<PlatformError> error() const
    {
        const std::lock_guard lock(m_mutex);
        return m_error;
    }

    std::atomic<int> endings = 0;
    std::atomic<bool> isLate = false;

private:
    mutable std::mutex m_mutex;
    std::optional<PlatformError> m_error;
};

} // namespace

/** How every system answers a request to activate an extension. A real one refuses a test, which
 * has no extension to bring. */
class TestSystemExtensionsContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRequestEndsOnceAfterTheCall()
    {
        OwnPlatform platform;
        const auto listener = std::make_shared<Listener>();
        const auto request = platform->systemExtensions->submitActivation(extension, listener);
        QVERIFY(request);
        QCOMPARE(listener->endings, 0);
        QVERIFY(QTest::qWaitFor([&] { return listener->endings > 0; }, 30'000));
        QTest::qWait(300);
        QCOMPARE(listener->endings, 1);
        QVERIFY(!listener->isLate);
        if (const auto error = listener->error()) {
            QCOMPARE(error->domain, u"OSSystemExtensionErrorDomain"_s);
            QVERIFY(error->code != 0);
            QVERIFY(!error->description.isEmpty());
        }
    }

    void aRequestThatIsLetGoIsNotHeardOf()
    {
        OwnPlatform platform;
        const auto listener = std::make_shared<Listener>();
        platform->systemExtensions->submitActivation(extension, listener).reset();
        QTest::qWait(1500);
        QCOMPARE(listener->endings, 0);
    }

    void theListenerIsHeldWeakly()
    {
        OwnPlatform platform;
        auto listener = std::make_shared<Listener>();
        const std::weak_ptr<Listener> watch = listener;
        const auto request = platform->systemExtensions->submitActivation(extension, listener);
        listener.reset();
        QVERIFY(watch.expired());
        QTest::qWait(1500);
    }
};

QTEST_GUILESS_MAIN(TestSystemExtensionsContract)
#include "tst_system_extensions_contract.moc"
