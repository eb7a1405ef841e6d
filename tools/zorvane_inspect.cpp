#include "app/records/blocked_application_json.h"
#include "app/records/paths.h"
#include "app/rule_lists.h"
#include "inspection/application_inspector.h"
#include "platform/bundle_reading.h"

#include <cstdio>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;
using namespace zorvane;

namespace
{

enum ExitStatus { Success = 0, Refused = 1, WrongUsage = 2 };

struct Arguments {
    QStringList bundles;
    /** Where the icon goes; empty if it is not wanted. */
    QString iconFile;
};

void complain(const QString &line)
{
    std::fputs(qPrintable(line + u'\n'), stderr);
}

/** The arguments, or the status to end with. */
std::variant<Arguments, ExitStatus> readArguments(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Prints what blocking an application means: one JSON object a line for each bundle."_s);
    parser.addPositionalArgument(u"BUNDLE"_s, u"An application's folder."_s, u"BUNDLE..."_s);
    const QCommandLineOption icon(
        u"icon"_s, u"Write the icon of the only bundle, a PNG, to <file>."_s, u"file"_s);
    const QCommandLineOption help({u"h"_s, u"help"_s}, u"Print this text."_s);
    parser.addOptions({icon, help});
    const bool understood = parser.parse(arguments);
    if (understood && parser.isSet(help)) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return Success;
    }
    const QStringList bundles = parser.positionalArguments();
    QString problem;
    if (!understood)
        problem = parser.errorText();
    else if (bundles.isEmpty())
        problem = u"No bundle given."_s;
    else if (parser.isSet(icon) && (bundles.size() != 1 || parser.value(icon).isEmpty()))
        problem = u"--icon takes a file, and a single bundle beside it."_s;
    if (problem.isEmpty())
        return Arguments{bundles, parser.value(icon)};
    complain(problem);
    complain(parser.helpText());
    return WrongUsage;
}

QByteArray lineOf(const records::BlockedApplication &application)
{
    QJsonObject object = records::toJson(application);
    object.insert(u"blockedCodeIdentities"_s,
        QJsonArray::fromStringList(app::blockedCodeIdentityKeys({application}, std::nullopt)));
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

bool writeIcon(const records::BlockedApplication &application, const QString &path)
{
    if (!application.iconData) {
        complain(application.path + u": This application has no icon that can be read."_s);
        return false;
    }
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(*application.iconData) >= 0 && file.flush())
        return true;
    complain(path + u": "_s + file.errorString());
    return false;
}

/** True if the bundle was inspected, printed, and its icon written where one is wanted. */
bool print(const inspection::ApplicationInspector &inspector, const QString &bundle,
    const QString &iconFile)
{
    const QUrl url = QUrl::fromLocalFile(records::standardizedPath(bundle));
    const auto result = inspector.inspectApplication(url, QUuid::createUuid());
    if (const auto *error = std::get_if<inspection::ApplicationInspectionError>(&result)) {
        complain(bundle + u": "_s + inspection::describe(*error));
        return false;
    }
    const auto &application = std::get<records::BlockedApplication>(result);
    const QByteArray line = lineOf(application);
    const bool written
        = std::fwrite(line.constData(), 1, size_t(line.size()), stdout) == size_t(line.size());
    return (iconFile.isEmpty() || writeIcon(application, iconFile)) && written;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const auto read = readArguments(QCoreApplication::arguments());
    if (const auto *status = std::get_if<ExitStatus>(&read))
        return *status;
    const auto &arguments = std::get<Arguments>(read);

    const platform::BundleReading reading = platform::makeBundleReading();
    const inspection::ApplicationInspector inspector(
        {*reading.bundles, *reading.signatures, *reading.walk, *reading.icons});
    bool allPrinted = true;
    for (const QString &bundle : arguments.bundles)
        allPrinted = print(inspector, bundle, arguments.iconFile) && allPrinted;
    if (std::fflush(stdout) != 0) {
        complain(u"Not everything could be written."_s);
        allPrinted = false;
    }
    return allPrinted ? Success : Refused;
}
