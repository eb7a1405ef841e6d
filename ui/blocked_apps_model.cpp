#include "ui/blocked_apps_model.h"

#include "ui/application_images.h"
#include "ui/component_line.h"

#include <algorithm>
#include <QSet>

using namespace Qt::StringLiterals;

namespace zorvane::ui
{

namespace
{

using records::BlockedApplication;

QString identifiersLine(const BlockedApplication &application)
{
    QStringList parts;
    parts << (application.bundleIdentifier.isEmpty() ? application.signingIdentifier
                                                     : application.bundleIdentifier);
    if (application.teamIdentifier && !application.teamIdentifier->isEmpty())
        parts << u"Team "_s + *application.teamIdentifier;
    return parts.join(u"  ·  "_s);
}

/** Whether nothing that a line shows is another; when a process was last seen is not shown. */
bool showSame(const QList<inspection::ApplicationNetworkComponent> &before,
    const QList<inspection::ApplicationNetworkComponent> &now)
{
    return std::ranges::equal(before, now, [](const auto &one, const auto &other) {
        return one.name == other.name && one.kind == other.kind;
    });
}

} // namespace

BlockedAppsModel::BlockedAppsModel(app::AppBlockStore &store)
    : m_store(store)
    , m_rows(wantedRows())
{
    connect(&store, &app::AppBlockStore::applicationsChanged, this, &BlockedAppsModel::follow);
    connect(
        &store, &app::AppBlockStore::discoveredProcessesChanged, this, &BlockedAppsModel::follow);
}

int BlockedAppsModel::count() const
{
    return static_cast<int>(m_rows.size());
}

int BlockedAppsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant BlockedAppsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto &[application, components] = m_rows[index.row()];
    switch (role) {
    case NameRole:
        return application.name;
    case IdentifiersRole:
        return identifiersLine(application);
    case IconRole:
        return ApplicationImages::address(application);
    case ComponentCountRole:
        return components.size();
    case ComponentsRevisionRole:
        return m_componentsRevision;
    default:
        return {};
    }
}

QVariantList BlockedAppsModel::components(int row) const
{
    if (row < 0 || row >= count())
        return {};
    return componentLines(m_rows[row].components);
}

QHash<int, QByteArray> BlockedAppsModel::roleNames() const
{
    return {{NameRole, "name"}, {IdentifiersRole, "identifiers"}, {IconRole, "icon"},
        {ComponentCountRole, "componentCount"}, {ComponentsRevisionRole, "componentsRevision"}};
}

void BlockedAppsModel::remove(int row)
{
    if (row < 0 || row >= count())
        return;
    // A copy: the store's announcement changes the rows while it runs.
    const auto application = m_rows[row].application;
    m_store.remove(application);
}

QList<BlockedAppsModel::Row> BlockedAppsModel::wantedRows() const
{
    const auto &applications = m_store.applications();
    const auto components = m_store.networkComponents(applications);
    QList<Row> rows;
    rows.reserve(applications.size());
    for (qsizetype i = 0; i < applications.size(); ++i)
        rows.append({applications[i], components[i]});
    return rows;
}

/** What a view shows of them; the rest of a record is no reason to look at the row again. */
QList<int> BlockedAppsModel::changedRoles(const Row &before, const Row &now)
{
    QList<int> roles;
    if (before.application != now.application) {
        if (before.application.name != now.application.name)
            roles << NameRole;
        if (identifiersLine(before.application) != identifiersLine(now.application))
            roles << IdentifiersRole;
        if (before.application.iconData != now.application.iconData)
            roles << IconRole;
    }
    if (before.components.size() != now.components.size())
        roles << ComponentCountRole;
    if (!showSame(before.components, now.components))
        roles << ComponentsRevisionRole;
    return roles;
}

void BlockedAppsModel::follow()
{
    const auto wanted = wantedRows();
    const auto before = count();
    removeMissing(wanted);
    for (int row = 0; row < wanted.size(); ++row)
        bringToRow(wanted[row], row);
    change(wanted);
    if (count() != before)
        Q_EMIT countChanged();
}

void BlockedAppsModel::removeMissing(const QList<Row> &wanted)
{
    QSet<QUuid> kept;
    for (const Row &row : wanted)
        kept.insert(row.application.id);
    for (int row = count() - 1; row >= 0; --row) {
        if (kept.contains(m_rows[row].application.id))
            continue;
        beginRemoveRows({}, row, row);
        m_rows.removeAt(row);
        endRemoveRows();
    }
}

/** All rows before @p row are in place already. */
void BlockedAppsModel::bringToRow(const Row &wanted, int row)
{
    const auto begin = m_rows.cbegin() + row;
    const auto found = std::find_if(begin, m_rows.cend(),
        [&](const Row &other) { return other.application.id == wanted.application.id; });
    if (found == m_rows.cend()) {
        beginInsertRows({}, row, row);
        m_rows.insert(row, wanted);
        endInsertRows();
    } else if (found != begin) {
        const auto from = static_cast<int>(found - m_rows.cbegin());
        beginMoveRows({}, from, from, {}, row);
        m_rows.move(from, row);
        endMoveRows();
    }
}

/**
 * The rows are those wanted, but for what they hold. Neighbours that change alike are announced
 * together: for each announcement a view goes through all that it has of the list.
 */
void BlockedAppsModel::change(const QList<Row> &wanted)
{
    ++m_componentsRevision;
    int first = 0;
    QList<int> roles;
    const auto announceUpTo = [&](int row) {
        if (!roles.isEmpty())
            Q_EMIT dataChanged(index(first), index(row - 1), roles);
    };
    const auto end = static_cast<int>(wanted.size());
    for (int row = 0; row < end; ++row) {
        const auto changed = changedRoles(m_rows[row], wanted[row]);
        if (changed != roles) {
            announceUpTo(row);
            first = row;
            roles = changed;
        }
        m_rows[row] = wanted[row];
    }
    announceUpTo(end);
}

} // namespace zorvane::ui
