#include "https/program_output.h"

#include <cstdio>
#include <QFile>
#include <QTemporaryFile>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

namespace
{

QString quoted(const QString &text)
{
    return u'\'' + QString(text).replace(u'\'', "'\\''"_L1) + u'\'';
}

} // namespace

// Not by QProcess: how it starts a program leaves the race detector blind for this thread's locks.
QByteArray programOutput(const QString &program, const QStringList &arguments,
    const QByteArray &input, const QString &folder)
{
    QTemporaryFile given;
    if (!given.open() || given.write(input) != input.size() || !given.flush())
        qFatal("%s cannot be written", qPrintable(given.fileName()));
    QString command = u"cd %1 && %2"_s.arg(quoted(folder.isEmpty() ? u"."_s : folder), program);
    for (const QString &argument : arguments)
        command += u' ' + quoted(argument);
    command += u" <"_s + quoted(given.fileName());
    std::FILE *const pipe = popen(QFile::encodeName(command).constData(), "r");
    QFile output;
    if (pipe == nullptr || !output.open(pipe, QIODevice::ReadOnly))
        qFatal("%s could not be started", qPrintable(program));
    QByteArray result = output.readAll();
    if (pclose(pipe) != 0)
        qFatal("%s failed", qPrintable(program));
    return result;
}

} // namespace zorvane::tests
