#include "ui/measures.h"
#include "ui/samples.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

/** How a row unfolds, and what it does with names of all kinds. */
class TestBlockedAppRow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theChevronTurnsDownWhenTheRowUnfolds()
    {
        const WindowFixture fixture({atlas});
        const auto chevron = symbol(u"chevron.right"_s);
        QCOMPARE(chevron(fixture)->rotation(), 0.0);
        fixture.click(fixture.item(u"disclosure"_s));
        QTRY_COMPARE(chevron(fixture)->rotation(), 90.0);
    }

    void unfoldingOneRowLeavesTheOthersFolded()
    {
        const WindowFixture fixture({atlas, quill});
        const auto folded = fixture.item(u"blockedApps"_s)->height();
        fixture.click(fixture.item(u"disclosure"_s));
        QTRY_COMPARE(place(0)(fixture)->property("unfolding").toReal(), 1.0);
        QVERIFY(fixture.item(u"blockedApps"_s)->height() > folded);
        const auto names = fixture.items(
            [](const QQuickItem *item) { return item->objectName() == u"componentName"; });
        QCOMPARE(names.size(), 1);
        fixture.click(fixture.item(u"disclosure"_s));
        QTRY_COMPARE(fixture.item(u"blockedApps"_s)->height(), folded);
    }

    void aNameWrittenFromRightToLeftStartsWhereTheOthersDo()
    {
        const WindowFixture fixture(
            {{u"\u05d0\u05d8\u05dc\u05e1"_s, u"org.example.atlas"_s, std::nullopt, std::nullopt}});
        const auto *const name = fixture.item(u"rowName"_s);
        QCOMPARE(name->property("text").toString().size(), 4);
        QCOMPARE(name->property("horizontalAlignment").toInt(), int(Qt::AlignLeft));
    }

    void aLongNameIsElidedAndWholeInItsToolTip()
    {
        const auto longName = u"A Very Long Name Indeed "_s.repeated(6).trimmed();
        const WindowFixture fixture(
            {{longName, u"org.example.long"_s, std::nullopt, std::nullopt}});
        const auto *const name = fixture.item(u"rowName"_s);
        QVERIFY(name->property("truncated").toBool());
        QVERIFY(inWindow(name).right() < inWindow(fixture.item(u"blockedBadge"_s)).left());
        QTest::mouseMove(fixture.window(), inWindow(name).center().toPoint());
        QTRY_VERIFY(fixture.item(u"toolTip"_s) != nullptr);
        QCOMPARE(fixture
                     .items([&](const QQuickItem *item) {
                         return item->inherits("QQuickText") && item->property("text") == longName;
                     })
                     .size(),
            2);
    }
};

QTEST_MAIN(TestBlockedAppRow)
#include "tst_blocked_app_row.moc"
