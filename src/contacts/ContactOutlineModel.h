// The contacts as a two-level list: people and companies, and below each company its people.
#pragma once

#include "storage/qvDataSource.h"

#include <QAbstractItemModel>

#include <unordered_map>
#include <vector>

class Contact;
class ContactManager;

class ContactOutlineModel : public QAbstractItemModel, private ListObserver {
    Q_OBJECT
public:
    /// Name of the icon that tells people from companies.
    enum Role { IconRole = Qt::UserRole + 1 };

    explicit ContactOutlineModel(ContactManager& contacts, QObject* parent = nullptr);
    ~ContactOutlineModel() override;

    Contact* contactAt(const QModelIndex& index) const;
    QModelIndex indexOf(const Contact& contact) const;
    const ListColumn& column(int section) const { return *m_columns[static_cast<std::size_t>(section)]; }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// Rows that are dragged out become text.
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;

Q_SIGNALS:
    /// The collection's selection changed or was kept through a reset; the view takes it over.
    void selectionWanted();

private:
    void listReset() override;
    void rowChanged(int row) override;
    void selectionChanged() override;
    void columnsChanged() override;
    void reset();
    /// Of the top level; -1 when it does not stand there.
    int topRowOf(const Contact* contact) const;

    ContactManager& m_contacts;
    std::vector<const ListColumn*> m_columns;
    std::vector<Contact*> m_top;
    /// Where each of them stands; made when it is first asked for.
    mutable std::unordered_map<const Contact*, int> m_rows;
};
