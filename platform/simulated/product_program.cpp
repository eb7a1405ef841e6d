#include "platform/simulated/product_program.h"

#include <QCoreApplication>
#include <QStandardPaths>

namespace zorvane::platform::simulated
{

QString productProgram(const QString &name)
{
    const QString beside
        = QStandardPaths::findExecutable(name, {QCoreApplication::applicationDirPath()});
    return beside.isEmpty() ? name : beside;
}

} // namespace zorvane::platform::simulated
