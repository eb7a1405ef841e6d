#include "ui/window_fixture.h"

#include <QColor>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::tests;

namespace
{

const SampleApplication atlas{u"Atlas"_s, u"org.example.atlas"_s, u"7QK2M4X9TP"_s, std::nullopt};
const SampleApplication quill{u"Quill"_s, u"org.example.quill"_s, std::nullopt, std::nullopt};

const QColor primary(0, 0, 0, qRound(0.86 * 255));
const QColor secondary(0, 0, 0, qRound(0.60 * 255));
const QColor redText(0xc8101e);

QRectF inWindow(const QQuickItem *item)
{
    return item->mapRectToScene(QRectF(QPointF(), item->size()));
}

/** An item in the first row, in the row's own coordinates. */
QRectF inRow(const WindowFixture &fixture, const QQuickItem *item)
{
    return inWindow(item).translated(-inWindow(fixture.item(u"blockedApps"_s)).topLeft());
}

QColor colour(const QObject *item)
{
    return QColor::fromRgba(item->property("color").value<QColor>().rgba());
}

QFont font(const QObject *item)
{
    return item->property("font").value<QFont>();
}

QQuickItem *symbol(const WindowFixture &fixture, const QString &name)
{
    return fixture
        .items([&](const QQuickItem *item) {
            return item->property("stroke").isValid() && item->property("name") == name;
        })
        .value(0);
}

} // namespace

/** The looks of a row, read from the running window. */
class TestBlockedAppRow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRowIsFiftySixHighAndTheDividerComesOnTop()
    {
        const WindowFixture fixture({atlas, quill});
        QCOMPARE(fixture.item(u"blockedApps"_s)->height(), 56.0 + 1 + 56);
        const auto dividers = fixture.items(
            [](const QQuickItem *item) { return item->objectName() == u"divider"; });
        QCOMPARE(dividers.size(), 2);
        QCOMPARE(dividers[0]->height(), 0.0);
        QCOMPARE(inRow(fixture, dividers[1]), QRectF(68, 56, 720 - 68 - 16, 1));
        QCOMPARE(colour(dividers[1]), QColor(0, 0, 0, qRound(0.10 * 255)));
    }

    void theIconIsThirtyEightSquare()
    {
        const WindowFixture fixture({atlas});
        const auto *const icon = fixture.item(u"rowIcon"_s);
        QCOMPARE(inRow(fixture, icon), QRectF(16, 9, 38, 38));
        QCOMPARE(icon->property("status").toInt(), 1);
    }

    void theNameStandsOverTheIdentifiers()
    {
        const WindowFixture fixture({atlas});
        const auto *const name = fixture.item(u"rowName"_s);
        QCOMPARE(font(name).pixelSize(), 13);
        QCOMPARE(font(name).weight(), QFont::Medium);
        QCOMPARE(colour(name), primary);
        const auto *const identifiers = fixture.item(u"rowIdentifiers"_s);
        QCOMPARE(font(identifiers).pixelSize(), 11);
        QCOMPARE(font(identifiers).weight(), QFont::Normal);
        QCOMPARE(colour(identifiers), secondary);
        QCOMPARE(inRow(fixture, name).left(), 68.0);
        QCOMPARE(inRow(fixture, identifiers).left(), 68.0);
        QCOMPARE(inWindow(identifiers).top() - inWindow(name).bottom(), 2.0);
    }

    void theBadgeIsRed()
    {
        const WindowFixture fixture({atlas});
        const auto *const text = fixture.text(u"Blocked"_s);
        QCOMPARE(font(text).pixelSize(), 10);
        QCOMPARE(font(text).weight(), QFont::Medium);
        QCOMPARE(colour(text), redText);
        const auto *const lock = symbol(fixture, u"lock.fill"_s);
        QCOMPARE(colour(lock), redText);
        QCOMPARE(lock->width(), 12.0);
        QCOMPARE(inWindow(text).left() - inWindow(lock).right(), 3.0);
        const auto *const badge = fixture.item(u"blockedBadge"_s);
        QCOMPARE(badge->height(), 20.0);
        QCOMPARE(badge->property("radius").toReal(), 6.0);
        QCOMPARE(colour(badge), QColor(0xff, 0x3b, 0x30, qRound(0.09 * 255)));
        QCOMPARE(inWindow(lock).left() - inWindow(badge).left(), 7.5);
        QCOMPARE(inWindow(badge).right() - inWindow(text).right(), 7.5);
    }

    void theRightGroupEndsTwelveFromTheEdge()
    {
        const WindowFixture fixture({atlas});
        const auto remove = inRow(fixture, fixture.button(u"Remove from list"_s));
        QCOMPARE(remove, QRectF(720 - 12 - 24, 16, 24, 24));
        const auto disclosure = inRow(fixture, fixture.item(u"disclosure"_s));
        QCOMPARE(disclosure, QRectF(remove.left() - 10 - 164, 16, 164, 24));
        const auto badge = inRow(fixture, fixture.item(u"blockedBadge"_s));
        QCOMPARE(badge.right(), disclosure.left() - 10);
        QCOMPARE(badge.top(), 18.0);
    }

    void theSymbolsOfTheButtonsAreSecondary()
    {
        const WindowFixture fixture({atlas});
        const auto *const cross = symbol(fixture, u"xmark"_s);
        QCOMPARE(colour(cross), secondary);
        QCOMPARE(cross->property("stroke").toReal(), 2.6);
        const auto *const chevron = symbol(fixture, u"chevron.right"_s);
        QCOMPARE(colour(chevron), secondary);
        QCOMPARE(chevron->property("stroke").toReal(), 2.6);
        QCOMPARE(chevron->width(), 12.0);
        QVERIFY(symbol(fixture, u"point.3.connected.trianglepath.dotted"_s) != nullptr);
    }

    void theChevronTurnsDownWhenTheRowUnfolds()
    {
        const WindowFixture fixture({atlas});
        QCOMPARE(symbol(fixture, u"chevron.right"_s)->rotation(), 0.0);
        fixture.click(fixture.item(u"disclosure"_s));
        QTRY_COMPARE(symbol(fixture, u"chevron.right"_s)->rotation(), 90.0);
    }

    void unfoldingOneRowLeavesTheOthersFolded()
    {
        const WindowFixture fixture({atlas, quill});
        const auto folded = fixture.item(u"blockedApps"_s)->height();
        fixture.click(fixture.item(u"disclosure"_s));
        // The main application, in a line between a divider and six points of air.
        QTRY_COMPARE(fixture.item(u"blockedApps"_s)->height(), folded + 1 + 4 + 32 + 6);
        const auto names = fixture.items(
            [](const QQuickItem *item) { return item->objectName() == u"componentName"; });
        QCOMPARE(names.size(), 1);
        QCOMPARE(inRow(fixture, names.first()).left(), 68.0 + 24 + 8);
        QCOMPARE(font(names.first()).pixelSize(), 12);
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
