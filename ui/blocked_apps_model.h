#pragma once

#include "app/app_block_store.h"

#include <QAbstractListModel>
#include <qqmlregistration.h>

namespace zorvane::ui
{

/**
 * The store's list as rows. Changes of the list come through as the smallest steps by the records'
 * ids, so that the other rows of a view keep their state. Main thread; the store outlives it.
 */
class BlockedAppsModel final : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        NameRole = Qt::UserRole,
        IdentifiersRole, ///< one line: bundle identifier and team
        IconRole, ///< an address of ApplicationImages; a new one for a new icon
        ComponentCountRole, ///< how many lines the row unfolds to
        ComponentsRevisionRole, ///< another number whenever these lines may have changed
    };

    explicit BlockedAppsModel(app::AppBlockStore &store);

    [[nodiscard]] int count() const;
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /** What the row unfolds to: a list of ComponentLine. */
    [[nodiscard]] Q_INVOKABLE QVariantList components(int row) const;

    /** Takes the application of this row off the store's list. */
    Q_INVOKABLE void remove(int row);

Q_SIGNALS:
    void countChanged();

private:
    struct Row {
        records::BlockedApplication application;
        app::NetworkComponents components;
    };

    [[nodiscard]] QList<Row> wantedRows() const;
    [[nodiscard]] static QList<int> changedRoles(const Row &before, const Row &now);
    void follow();
    void removeMissing(const QList<Row> &wanted);
    void bringToRow(const Row &wanted, int row);
    void change(const QList<Row> &wanted);

    app::AppBlockStore &m_store;
    QList<Row> m_rows;
    int m_componentsRevision = 0;
};

} // namespace zorvane::ui
