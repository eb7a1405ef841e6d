#include "app/records/code_identity.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::records;

class TestCodeIdentity : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keyHasTheTeamFirst()
    {
        const auto identity = CodeIdentity::make(u"com.example.Tool"_s, u"ABCDE12345"_s);
        QCOMPARE(identityKey(identity), u"QUJDREUxMjM0NQ==.Y29tLmV4YW1wbGUuVG9vbA=="_s);
    }

    void keyWithoutTeamBeginsWithTheSeparator()
    {
        const auto identity = CodeIdentity::make(u"com.example.Tool"_s, std::nullopt);
        QCOMPARE(identityKey(identity), u".Y29tLmV4YW1wbGUuVG9vbA=="_s);
    }
};

QTEST_APPLESS_MAIN(TestCodeIdentity)
#include "tst_code_identity.moc"
