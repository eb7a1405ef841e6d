#include <QGuiApplication>
#include <QQuickWindow>

/** The least that a Qt Quick program can be: what the main window is measured against. */
int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    QQuickWindow window;
    window.setTitle(QStringLiteral("Empty"));
    window.resize(760, 650);
    window.show();
    return QGuiApplication::exec();
}
