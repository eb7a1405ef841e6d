// zorvane-make-icon SVG ICNS: writes the icon family of a picture. Part of the build.

#include "tools/icon_family/icon_family_writer.h"

#include <cstdio>
#include <QCoreApplication>
#include <QFile>

using namespace Qt::StringLiterals;

namespace
{

int fail(const QString &line)
{
    std::fputs(qPrintable(line + u'\n'), stderr);
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        return fail(u"Usage: zorvane-make-icon SVG ICNS"_s);

    QFile svg(arguments.at(1));
    if (!svg.open(QIODevice::ReadOnly))
        return fail(svg.fileName() + u": "_s + svg.errorString());
    const QByteArray family = zorvane::tools::iconFamilyOf(svg.readAll());
    if (family.isEmpty())
        return fail(svg.fileName() + u": not an SVG document."_s);

    QFile icns(arguments.at(2));
    if (!icns.open(QIODevice::WriteOnly) || icns.write(family) != family.size() || !icns.flush())
        return fail(icns.fileName() + u": "_s + icns.errorString());
    return EXIT_SUCCESS;
}
