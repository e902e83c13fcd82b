// The suppliers among the contacts, as they stood when the list was made: what the supplier picker shows. The records are the
// contacts' own.
#pragma once

#include "storage/qvDataSource.h"

class ContactManager;

class SupplierDataSource : public qvDataSource {
public:
    SupplierDataSource(const SortSettings& sorting, Beeper& beeper, const ContactManager& contacts);

    int getCount() const override { return static_cast<int>(m_suppliers.size()); }
    /// In the contacts' order, and as their list shows them, whether they are filtered away or not.
    dataObject* getnthItem(int n) const override;
    dataObject* getnthSortedItem(int n) const override;

private:
    std::vector<dataObject*> m_suppliers;
    std::vector<dataObject*> m_sorted;
};
