#include "own_platform.h"

#include <QTest>
#include <QUuid>

using namespace Qt::StringLiterals;
using namespace zorvane::platform;
using zorvane::tests::OwnPlatform;

/** What every system's preferences do, in a suite of the test's own. */
class TestPreferencesContract : public QObject
{
    Q_OBJECT

private:
    [[nodiscard]] std::unique_ptr<Preferences> open() const
    {
        return (*m_platform)->suites->open(m_name);
    }

    std::unique_ptr<OwnPlatform> m_platform;
    QString m_name;

private Q_SLOTS:
    void init()
    {
        m_platform = std::make_unique<OwnPlatform>();
        m_name = u"group.dev.kestrelworks.Zorvane.test."_s
            + QUuid::createUuid().toString(QUuid::WithoutBraces);
    }
    void cleanup() { m_platform.reset(); }

    void everyTypeComesBackAsItWas()
    {
        const QByteArray bytes("\x00\xFF list", 7);
        const QDateTime date(QDate(2026, 3, 1), QTime(12, 30, 15), Qt::UTC);
        const auto mine = open();
        mine->setBoolean(u"on"_s, true);
        mine->setBoolean(u"off"_s, false);
        mine->setData(u"bytes"_s, bytes);
        mine->setDate(u"date"_s, date);
        mine->setString(u"text"_s, u"Äpfel 🍏"_s);
        mine->synchronize();
        const auto theirs = open();
        QVERIFY(theirs->boolean(u"on"_s));
        QVERIFY(!theirs->boolean(u"off"_s));
        QCOMPARE(theirs->data(u"bytes"_s), bytes);
        QCOMPARE(theirs->date(u"date"_s), date);
        QCOMPARE(theirs->date(u"date"_s)->timeSpec(), Qt::UTC);
        QCOMPARE(theirs->string(u"text"_s), u"Äpfel 🍏"_s);
    }

    void aKeySetToFalseIsPresent()
    {
        const auto preferences = open();
        QVERIFY(!preferences->contains(u"protectionRequested"_s));
        preferences->setBoolean(u"protectionRequested"_s, false);
        QVERIFY(preferences->contains(u"protectionRequested"_s));
        preferences->synchronize();
        QVERIFY(preferences->contains(u"protectionRequested"_s));
        QVERIFY(!preferences->boolean(u"protectionRequested"_s));
    }

    void truthOfATextIsReadAsThePlatformReadsIt_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("expected");

        QTest::newRow("YES") << u"YES"_s << true;
        QTest::newRow("true") << u"true"_s << true;
        QTest::newRow("1") << u"1"_s << true;
        QTest::newRow("NO") << u"NO"_s << false;
        QTest::newRow("no") << u"no"_s << false;
        QTest::newRow("000") << u"000"_s << false;
        QTest::newRow("empty") << QString() << false;
    }

    void truthOfATextIsReadAsThePlatformReadsIt()
    {
        QFETCH(QString, text);
        const auto preferences = open();
        preferences->setString(u"k"_s, text);
        QVERIFY(preferences->contains(u"k"_s));
        QTEST(preferences->boolean(u"k"_s), "expected");
    }

    void dataDatesAndTextsAreNeverConverted()
    {
        const auto preferences = open();
        preferences->setBoolean(u"truth"_s, true);
        preferences->setData(u"data"_s, "1");
        preferences->setDate(u"date"_s, QDateTime::currentDateTimeUtc());
        preferences->setString(u"text"_s, u"2026-03-01T12:00:00Z"_s);
        for (const QString &key : {u"truth"_s, u"date"_s, u"text"_s, u"absent"_s})
            QCOMPARE(preferences->data(key), std::nullopt);
        for (const QString &key : {u"truth"_s, u"data"_s, u"text"_s, u"absent"_s})
            QCOMPARE(preferences->date(key), std::nullopt);
        for (const QString &key : {u"truth"_s, u"data"_s, u"date"_s, u"absent"_s})
            QCOMPARE(preferences->string(key), std::nullopt);
        for (const QString &key : {u"data"_s, u"date"_s, u"absent"_s})
            QVERIFY(!preferences->boolean(key));
    }

    void whatIsSetIsSeenAtOnce()
    {
        const auto preferences = open();
        preferences->setString(u"k"_s, u"one"_s);
        QCOMPARE(preferences->string(u"k"_s), u"one"_s);
        preferences->setData(u"k"_s, "two");
        QCOMPARE(preferences->data(u"k"_s), "two");
        QCOMPARE(preferences->string(u"k"_s), std::nullopt);
    }

    void aSuiteIsApartFromTheProgramsOwn()
    {
        open()->setBoolean(m_name, true);
        QVERIFY(!(*m_platform)->preferences->contains(m_name));
    }
};

QTEST_GUILESS_MAIN(TestPreferencesContract)
#include "tst_preferences_contract.moc"
