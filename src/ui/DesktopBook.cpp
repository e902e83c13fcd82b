#include "ui/DesktopBook.h"

#ifdef VENDARO_DESKTOP_BOOK

#include "contacts/VcardReader.h"
#include "desktop/Alerts.h"
#include "desktop/TextTable.h"

#include <libebook/libebook.h>

#include <iterator>
#include <memory>

namespace {

/// What is there answers at once, and nobody waits for a server somewhere else.
constexpr auto doNotWait = static_cast<guint32>(-1);

/// Every field of everybody contains nothing.
constexpr char everybody[] = R"((contains "x-evolution-any-field" ""))";

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using Owned = std::unique_ptr<Object, Unref>;

void tell(AddressBookPeople& all, const QString& book, GError* error)
{
    all.troubles += fillText(
        localText("The desktop's address book %@ cannot be read: %@"), {book, error ? QString::fromUtf8(error->message) : QString()});
    g_clear_error(&error);
}

void takeContact(AddressBookPeople& all, EContact* contact)
{
    // A list for letters to several is nobody.
    if (e_contact_get(contact, E_CONTACT_IS_LIST))
        return;
    gchar* card = e_vcard_to_string(E_VCARD(contact), EVC_FORMAT_VCARD_30);
    VcardPeople read = readVcards(card ? card : "");
    g_free(card);
    std::move(read.people.begin(), read.people.end(), std::back_inserter(all.people));
}

void readBook(AddressBookPeople& all, ESource* source, const GoesOn& goesOn)
{
    const QString name = QString::fromUtf8(e_source_get_display_name(source));
    GError* error = nullptr;
    const Owned<EClient> client(e_book_client_connect_sync(source, doNotWait, nullptr, &error));
    if (!client)
        return tell(all, name, error);
    GSList* contacts = nullptr;
    if (!e_book_client_get_contacts_sync(E_BOOK_CLIENT(client.get()), everybody, &contacts, nullptr, &error))
        return tell(all, name, error);
    const auto count = static_cast<double>(g_slist_length(contacts));
    int taken = 0;
    for (const GSList* contact = contacts; contact && !all.wasStopped; contact = contact->next) {
        takeContact(all, E_CONTACT(contact->data));
        all.wasStopped = !goesOn(++taken / count);
    }
    g_slist_free_full(contacts, g_object_unref);
}

} // namespace

AddressBookPeople DesktopBook::people(const GoesOn& goesOn) const
{
    AddressBookPeople all;
    const Owned<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!bus)
        return all;
    // The program ends as it always does, not because a bus went away.
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    GError* error = nullptr;
    const Owned<ESourceRegistry> registry(e_source_registry_new_sync(nullptr, &error));
    if (!registry) {
        // Where no such server is installed, nobody misses it.
        const bool isMissing = g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN);
        if (isMissing)
            g_clear_error(&error);
        else
            tell(all, {}, error);
        return all;
    }
    GList* sources = e_source_registry_list_enabled(registry.get(), E_SOURCE_EXTENSION_ADDRESS_BOOK);
    const auto count = static_cast<double>(g_list_length(sources));
    int read = 0;
    for (const GList* source = sources; source && !all.wasStopped; source = source->next) {
        readBook(all, E_SOURCE(source->data), [&](double share) { return goesOn((read + share) / count); });
        ++read;
    }
    g_list_free_full(sources, g_object_unref);
    return all;
}

#else

AddressBookPeople DesktopBook::people(const GoesOn&) const
{
    return {};
}

#endif
