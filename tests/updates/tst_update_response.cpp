#include "fakes/fake_platform.h"
#include "updates/update_notification_controller.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane;
using namespace zorvane::tests;
using updates::UpdateNotificationController;

namespace
{

struct Fixture {
    FakePlatform system;
    std::shared_ptr<UpdateNotificationController> controller
        = std::make_shared<UpdateNotificationController>(UpdateNotificationController::Services{
            system.scheduler, system.preferences, system.notifications, system.actions});

    Fixture() { controller->registerCategories(); }

    /** Lets the user respond to a notification; true if the response was acknowledged. */
    bool respond(const QVariantMap &userInfo, const QString &action = {},
        const QString &category = u"ZORVANE_UPDATE"_s)
    {
        int acknowledged = 0;
        system.notifications.delegate()->didReceive(
            {action, category, userInfo}, [&] { ++acknowledged; });
        system.scheduler.settle();
        return acknowledged == 1;
    }
};

} // namespace

/** What a click on the announcement does. */
class TestUpdateResponse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyResponseOpensThePageInFront_data()
    {
        QTest::addColumn<QString>("action");
        QTest::newRow("a click on the notification") << QString();
        QTest::newRow("the action") << u"DOWNLOAD_UPDATE"_s;
    }

    void everyResponseOpensThePageInFront()
    {
        QFETCH(QString, action);
        Fixture f;
        QVERIFY(f.respond({{u"downloadURL"_s, u"https://www.kestrelworks.dev/d"_s}}, action));
        QCOMPARE(f.system.actions.calls,
            QStringList({u"front"_s, u"url https://www.kestrelworks.dev/d"_s}));
    }

    void aResponseWithAnUnusableAddressOnlyComesToTheFront_data()
    {
        QTest::addColumn<QVariantMap>("userInfo");
        const auto row = [](const char *name, const QVariant &address) {
            QTest::newRow(name) << QVariantMap{{u"downloadURL"_s, address}};
        };
        row("plain http", u"http://kestrelworks.dev/"_s);
        row("another host", u"https://evil.example/"_s);
        row("no text", QByteArray("https://kestrelworks.dev/"));
        row("a URL object", QUrl(u"https://kestrelworks.dev/"_s));
        row("a hidden host", u"https://kestrelworks.dev@evil.example/"_s);
        QTest::newRow("no address") << QVariantMap();
    }

    void aResponseWithAnUnusableAddressOnlyComesToTheFront()
    {
        QFETCH(QVariantMap, userInfo);
        Fixture f;
        QVERIFY(f.respond(userInfo));
        QCOMPARE(f.system.actions.calls, QStringList{u"front"_s});
    }

    void aResponseOfAnotherCategoryOpensNothing()
    {
        Fixture f;
        QVERIFY(f.respond({{u"downloadURL"_s, u"https://kestrelworks.dev/"_s}},
            u"DOWNLOAD_UPDATE"_s, u"OTHER"_s));
        QCOMPARE(f.system.actions.calls, QStringList{u"front"_s});
    }

    void aResponseIsAcknowledgedAlsoWhenNobodyIsLeft()
    {
        Fixture f;
        bool acknowledged = false;
        f.system.notifications.delegate()->didReceive({}, [&] { acknowledged = true; });
        f.controller.reset();
        QVERIFY(!acknowledged);
        f.system.scheduler.settle();
        QVERIFY(acknowledged);
        QVERIFY(f.system.actions.calls.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestUpdateResponse)
#include "tst_update_response.moc"
