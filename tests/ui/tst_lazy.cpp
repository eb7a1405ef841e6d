#include "ui/lazy.h"

#include <memory>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using zorvane::ui::Lazy;

namespace
{

/** A place with what the text says within it. */
struct Fixture {
    explicit Fixture(const QByteArray &text)
        : component(&engine)
    {
        engine.addImportPath(u"qrc:/qt/qml"_s);
        component.setData("import QtQuick\nimport Zorvane.Ui\nLazy { id: lazy\n" + text + "}", {});
        lazy.reset(qobject_cast<Lazy *>(component.create()));
        if (lazy == nullptr)
            qFatal("%s", qUtf8Printable(component.errorString()));
    }

    QQmlEngine engine;
    QQmlComponent component;
    std::unique_ptr<Lazy> lazy;
};

} // namespace

class TestLazy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsWantedIsBuiltAndWhatIsNotIsDestroyed()
    {
        const Fixture fixture("Item { width: 30; height: 20 }");
        QCOMPARE(fixture.lazy->item(), nullptr);
        const QSignalSpy changes(fixture.lazy.get(), &Lazy::itemChanged);
        fixture.lazy->setActive(true);
        QVERIFY(fixture.lazy->item() != nullptr);
        QCOMPARE(fixture.lazy->implicitWidth(), 30.0);
        fixture.lazy->setActive(false);
        QCOMPARE(fixture.lazy->item(), nullptr);
        QCOMPARE(fixture.lazy->implicitWidth(), 0.0);
        QCOMPARE(changes.size(), 2);
    }

    void anItemThatWantsToGoWhileItIsBuiltGoes()
    {
        const Fixture fixture(
            "active: true; Item { width: 30; Component.onCompleted: lazy.active = false }");
        QVERIFY(!fixture.lazy->isActive());
        QCOMPARE(fixture.lazy->item(), nullptr);
        QVERIFY(fixture.lazy->childItems().isEmpty());
        QCOMPARE(fixture.lazy->implicitWidth(), 0.0);
    }

    void anItemThatGoesAndComesWhileItIsBuiltIsBuiltOnce()
    {
        const Fixture fixture("active: true; Item { Component.onCompleted: { lazy.active = false; "
                              "lazy.active = true; } }");
        QVERIFY(fixture.lazy->isActive());
        QVERIFY(fixture.lazy->item() != nullptr);
        QCOMPARE(fixture.lazy->childItems().size(), 1);
    }
};

QTEST_MAIN(TestLazy)
#include "tst_lazy.moc"
