#include "filter/filter_status.h"

#include <QTest>

using namespace Qt::StringLiterals;
using zorvane::filter::FilterStatus;

class TestFilterStatus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isInactiveAtFirst() { QCOMPARE(FilterStatus().kind(), FilterStatus::Kind::Inactive); }

    void failuresAreEqualOnlyWithTheSameText()
    {
        QVERIFY(FilterStatus::failed(u"a"_s) == FilterStatus::failed(u"a"_s));
        QVERIFY(FilterStatus::failed(u"a"_s) != FilterStatus::failed(u"b"_s));
    }

    void failureWithoutTextIsNotInactive()
    {
        QVERIFY(FilterStatus::failed(QString()) != FilterStatus(FilterStatus::Kind::Inactive));
    }

    void kindsAreDeclaredInOrder()
    {
        const auto kinds = QMetaEnum::fromType<FilterStatus::Kind>();
        const QStringList names{u"Failed"_s, u"Inactive"_s, u"InstallationRequired"_s,
            u"Activating"_s, u"AwaitingApproval"_s, u"Enabled"_s};
        QCOMPARE(kinds.keyCount(), int(names.size()));
        for (int i = 0; i < kinds.keyCount(); ++i)
            QCOMPARE(QString::fromLatin1(kinds.key(i)), names.at(i));
    }
};

QTEST_APPLESS_MAIN(TestFilterStatus)
#include "tst_filter_status.moc"
