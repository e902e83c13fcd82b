// The contacts: their collection, the two-level list of companies and people, and the editors.
#pragma once

#include "contacts/Contact.h"
#include "contacts/ContactEditors.h"
#include "storage/CollectionFile.h"
#include "storage/ListForm.h"

#include <functional>
#include <optional>
#include <unordered_map>

class Alerts;
class DateFormatGate;
class FilePanels;
class OrderLinks;
class SettingsForm;

struct ContactManagerNeeds {
    const SortSettings& sorting;
    const SettingsForm& preferences;
    WriteGate& gate;
    Alerts& alerts;
    Beeper& beeper;
    DateFormatGate& dateFormat;
    OrderLinks& orders;
    FilePanels& panels;
    ContactCommandNeeds commands;
    /// Shows one line in the status bar.
    std::function<void(const QString&)> showStatus;
};

class ContactManager : public Collection<Contact> {
public:
    explicit ContactManager(ContactManagerNeeds needs);

    IndividualForm form;
    ListForm listForm;
    CompanyEditor companyEditor;
    CompanyContactEditor companyContactEditor;

    Contact* currentItem() const { return m_currentItem; }

    Contact* getContactbyId(int id) const { return getItemById(id); }
    /// The first contact with exactly that name.
    Contact* getContactbyName(std::string_view name) const;
    Contact* getCompanyByName(std::string_view name) const;
    Contact* weHaveThisOneAlready(const Contact& contact) const;
    // The n-th are counted from 0; there is none beyond the last.
    /// Everybody but the people of companies, in collection order.
    int countCompanies() const;
    Contact* getnthCompany(int n) const;
    int countVisibleCompanies() const;
    Contact* getnthVisibleCompany(int n) const;
    static bool isSupplier(const Contact& contact);
    int countSuppliers() const;
    Contact* getnthSupplier(int n) const;
    int countContactsforThisCompany(int companyId) const;
    Contact* getnthContact(int n, int forCompany) const;
    /// The people of the company, in collection order.
    const std::vector<Contact*>& contactsOfCompany(int companyId) const;

    void create();
    void createForCurrentOrder(int orderId);
    void edit() override;
    void editThisContact(Contact& contact);
    void editThisContact(Contact& contact, int forOrder);
    void finish();
    void cancel();
    void makeCompany();
    void linkToCompany();
    void deleteContact(Contact& contact);
    void deleteKey() override;

    // Beyond the editors
    /// Makes a contact of everybody in the address book, whether there is one of that name already or not.
    void importAllContactsFromAB();
    /// The selected contacts, as the list shows them.
    std::vector<const Contact*> getSelectedContactsForExport() const;
    /// Writes the selected contacts into a file for mailing programs.
    void generateEmailList();
    /// Moves third address lines into the county where that is empty.
    void moveAdd3ToCounty();

    /// The pop-ups of types: the built-in ones, then the user's.
    void populateLists(const std::optional<QStringList>& userTypes);
    std::string objectValue(std::string_view identifier, int row) const override;
    /// Every top-level row in display order: what the two-level list shows.
    std::vector<Contact*> topLevel() const;
    /// A saved or changed contact goes to its order, the list and the disk.
    void saved(Contact& contact);
    /// The reference of a new contact: the user's prefix and the id.
    std::string newReference(int id) const;
    /// A new contact joins the collection. When its id went to another one meanwhile it gets the next, and so does its reference.
    Contact& join(std::unique_ptr<Contact> created);

protected:
    void recordAdded(dataObject& record) override;
    void recordRemoved(dataObject& record) override;
    void recordChanged(dataObject& record) override;
    void applyFilter() override;
    void recordsCleared() override;

private:
    void setItem(const Contact& contact);
    void copyEditorInto(Contact& contact);
    void moveInEditorOf(const Contact& contact);
    void begin();
    /// Whether the editor now holds a new contact.
    bool createNew();
    bool isBeingEdited(const Contact* contact) const;
    std::vector<Contact*> outline() const;
    std::vector<Contact*> selectedContacts() const;
    Contact* shownBefore(const Contact& contact) const;
    template <class Test>
    int countWhere(Test test) const;
    template <class Test>
    Contact* nthWhere(int n, Test test) const;
    const std::unordered_map<int, std::vector<Contact*>>& peopleByCompany() const;

    ContactManagerNeeds m_needs;
    ContactCommands m_commands;
    Contact* m_currentItem = nullptr;
    /// A new contact joins the collection on its first save.
    std::unique_ptr<Contact> m_created;
    /// A contact that was made or opened for an order; saving it connects the two.
    struct ForOrder {
        const Contact* contact;
        int orderId;
    };
    std::optional<ForOrder> m_forOrder;
    mutable std::unordered_map<int, std::vector<Contact*>> m_peopleByCompany;
    mutable bool m_peopleValid = false;
};

/// "contacts.xml".
class ContactFile : public CollectionFile<Contact> {
public:
    explicit ContactFile(ContactManager& contacts) : CollectionFile(contacts, recordFiles::contacts, "contacts", "contacts") { }

    const char* recordName() const override { return "Contact"; }

protected:
    std::unique_ptr<Contact> make() const override { return std::make_unique<Contact>(); }
    bool complete(StoredRecord<Contact>& stored) const override;
    std::span<const std::string_view> titleKeys() const override { return keys; }
    std::span<const std::string_view> tellingKeys() const override { return telling; }
    void visitLinks(StoredRecord<Contact>& stored, TextStore&, const UseLink& use) const override
    {
        use(recordFiles::contacts, stored.values.change().company);
    }

private:
    static constexpr std::array<std::string_view, 1> keys {"name"};
    static constexpr std::array<std::string_view, 8> telling {
        "name", "companyname", "email", "phone", "mobile", "add1", "postcode", "website"};
};
