#include <ctime>
#include <QByteArray>
#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QQuickWindow>

/**
 * @file
 * Loaded into a Qt Quick program by LD_PRELOAD: writes the CLOCK_MONOTONIC time, in nanoseconds, at
 * which the program's first frame was swapped to the file named by ZORVANE_FIRST_FRAME. The program
 * itself knows nothing of it.
 */
namespace
{

void writeTime()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    QFile file(qEnvironmentVariable("ZORVANE_FIRST_FRAME"));
    if (file.open(QIODevice::NewOnly))
        file.write(QByteArray::number(qint64{now.tv_sec} * 1'000'000'000 + now.tv_nsec));
}

/** Finds the first window as it is shown. */
class WindowWatcher final : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Show)
            return false;
        if (auto *window = qobject_cast<QQuickWindow *>(watched)) {
            QObject::connect(
                window, &QQuickWindow::frameSwapped, window, writeTime, Qt::DirectConnection);
            QCoreApplication::instance()->removeEventFilter(this);
        }
        return false;
    }
};

void watch()
{
    QCoreApplication *application = QCoreApplication::instance();
    application->installEventFilter(new WindowWatcher(application));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watch)
