#include "contacts/SupplierDataSource.h"

#include "contacts/ContactManager.h"

namespace {

dataObject* supplierAt(const std::vector<dataObject*>& suppliers, int n)
{
    return n >= 0 && n < static_cast<int>(suppliers.size()) ? suppliers[static_cast<std::size_t>(n)] : nullptr;
}

} // namespace

SupplierDataSource::SupplierDataSource(const SortSettings& sorting, Beeper& beeper, const ContactManager& contacts)
    : qvDataSource(sorting, beeper)
{
    for (int n = 0; n < contacts.getCount(); ++n) {
        if (Contact* contact = contacts.getnthItem(n); ContactManager::isSupplier(*contact))
            m_suppliers.push_back(contact);
        if (Contact* contact = contacts.getnthSortedItem(n); contact && ContactManager::isSupplier(*contact))
            m_sorted.push_back(contact);
    }
}

dataObject* SupplierDataSource::getnthItem(int n) const
{
    return supplierAt(m_suppliers, n);
}

dataObject* SupplierDataSource::getnthSortedItem(int n) const
{
    return supplierAt(m_sorted, n);
}
