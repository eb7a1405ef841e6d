#include "filter/error_classification.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::filter;
using zorvane::platform::PlatformError;

class TestErrorClassification : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void classifies_data()
    {
        QTest::addColumn<QString>("domain");
        QTest::addColumn<qint64>("code");
        QTest::addColumn<QString>("description");
        QTest::addColumn<bool>("permission");
        QTest::addColumn<bool>("awaitingApproval");

        const auto row = [](const char *name, const QString &domain, qint64 code,
                             const QString &description, bool permission, bool awaiting) {
            QTest::newRow(name) << domain << code << description << permission << awaiting;
        };
        const QString filter = u"NEFilterErrorDomain"_s;
        const QString configuration = u"NEConfigurationErrorDomain"_s;
        const QString extension = u"OSSystemExtensionErrorDomain"_s;
        row("filter domain, code 5", filter, 5, u"x"_s, true, true);
        row("filter domain, another code", filter, 3, u"x"_s, false, false);
        row("filter domain, another code, but its text says so", filter, 3, u"Permission Denied"_s,
            true, true);
        row("configuration domain, code 10", configuration, 10, u"x"_s, true, true);
        row("configuration domain, code 5", configuration, 5, u"x"_s, false, false);
        row("configuration domain, code 5, but its text says so", configuration, 5,
            u"permission denied"_s, true, true);
        row("filter code in the configuration's domain and the reverse", filter, 10, u"x"_s, false,
            false);
        row("extension domain, code 13", extension, 13, u"x"_s, false, true);
        row("extension domain, code 8", extension, 8, u"x"_s, false, false);
        row("any domain, the text in capitals", u"Elsewhere"_s, 0,
            u"Operation failed: PERMISSION DENIED by policy"_s, true, true);
        row("two blanks are another text", u"Elsewhere"_s, 0, u"permission  denied"_s, false,
            false);
        row("domains are compared exactly", u"nefiltererrordomain"_s, 5, u"x"_s, false, false);
        row("no text at all", u"Elsewhere"_s, 0, QString(), false, false);
    }

    void classifies()
    {
        QFETCH(QString, domain);
        QFETCH(qint64, code);
        QFETCH(QString, description);
        const PlatformError error{domain, code, description};
        QTEST(isFilterPermissionError(error), "permission");
        QTEST(isAwaitingApprovalError(error), "awaitingApproval");
    }
};

QTEST_APPLESS_MAIN(TestErrorClassification)
#include "tst_error_classification.moc"
