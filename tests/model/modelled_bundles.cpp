#include "model/modelled_bundles.h"

#include "model/modelled_applications.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace zorvane::tests
{

using records::BlockedApplication;
using records::CodeIdentity;

namespace
{

ModelledBundles::Helper helperFor(int number)
{
    if (number % 32 == 31)
        return CodeIdentity{u"dev.kestrelworks.Zorvane.Helper"_s, u"TEAM"_s};
    if (number % 4 == 1)
        return CodeIdentity{u"com.example.helper%1"_s.arg(number % 7), u"TEAM"_s};
    if (number % 4 == 2)
        return CodeIdentity{u"com.example.helper%1"_s.arg(number % 7), std::nullopt};
    return std::nullopt;
}

} // namespace

void ModelledBundles::change(int number)
{
    const QString path = modelledPath(number);
    const int kind = number / modelledApplications;
    takeAway(path);
    if (kind % 4 == 0)
        return;
    const int occupant = kind / 64 % 2 == 0 ? kind : number;
    put(path, modelledIdentifier(occupant), modelledName(kind), helperFor(kind / 4));
    if (kind % 16 == 1) {
        m_system.bundles.information[path].remove(u"CFBundleIdentifier"_s);
        m_inspected[path] = {{}, u"This application's identifier could not be read."_s};
    } else if (kind % 16 == 2) {
        m_system.signatures.signatures.remove(path);
        m_inspected[path]
            = {{}, u"This application does not have an identifiable code signature."_s};
    }
}

void ModelledBundles::put(
    const QString &path, const QString &identifier, const QString &name, const Helper &helper)
{
    m_system.addBundle(path, identifier, u" TEAM "_s, name);
    BlockedApplication record;
    record.name = name.isEmpty() ? QFileInfo(path).completeBaseName() : name;
    record.bundleIdentifier = identifier;
    record.signingIdentifier = identifier;
    record.teamIdentifier = u"TEAM"_s;
    record.auxiliaryCodeIdentities = QList<CodeIdentity>();
    record.inspectionVersion = 5;
    record.path = path;
    if (helper) {
        const QString inside = path + "/Contents/Helpers/Helper.app"_L1;
        m_system.walk.items.emplace_back(inside.toStdString(), platform::ItemKind::Directory);
        m_system.signatures.signatures.insert(
            inside, {helper->signingIdentifier, helper->teamIdentifier});
        record.auxiliaryCodeIdentities->append(*helper);
    }
    m_inspected.insert(path, {record, {}});
}

Inspected ModelledBundles::inspected(const QString &path) const
{
    return m_inspected.value(path, {{}, u"Drop an application with the .app extension."_s});
}

void ModelledBundles::takeAway(const QString &path)
{
    m_system.bundles.information.remove(path);
    std::erase_if(m_system.walk.items, [prefix = path.toStdString() + '/'](const auto &item) {
        return item.first.starts_with(prefix);
    });
    m_inspected.remove(path);
}

} // namespace zorvane::tests
