// The desktop's address book: a real server on a bus and a home of its own, where the program was built with its library.
#include "ui/DesktopBook.h"

#include <gtest/gtest.h>

#ifdef VENDARO_DESKTOP_BOOK

#include <QTemporaryDir>

#include <libebook/libebook.h>

#include <algorithm>

namespace {

class DesktopBookTest : public testing::Test {
protected:
    static constexpr char services[] = "/usr/share/dbus-1/services";

    DesktopBookTest()
    {
        for (const char* variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
            m_before.emplace_back(variable, qgetenv(variable)), qputenv(variable, m_home.path().toUtf8());
        m_before.emplace_back("GSETTINGS_BACKEND", qgetenv("GSETTINGS_BACKEND"));
        qputenv("GSETTINGS_BACKEND", "memory");
    }
    ~DesktopBookTest() override
    {
        if (m_bus) {
            // Not down(): that waits for whoever still has the connection, which the library lets go in its own time.
            g_test_dbus_stop(m_bus);
            g_object_unref(m_bus);
        }
        for (const auto& [variable, value] : m_before) {
            if (value.isNull())
                qunsetenv(variable);
            else
                qputenv(variable, value);
        }
    }
    void startBus(const char* serviceFolder)
    {
        m_bus = g_test_dbus_new(G_TEST_DBUS_NONE);
        if (serviceFolder)
            g_test_dbus_add_service_dir(m_bus, serviceFolder);
        g_test_dbus_up(m_bus);
    }
    static bool hasServer()
    {
        return g_file_test("/usr/share/dbus-1/services/org.gnome.evolution.dataserver.AddressBook.service", G_FILE_TEST_EXISTS)
            || g_file_test("/usr/share/dbus-1/services/org.gnome.evolution.dataserver.AddressBook10.service", G_FILE_TEST_EXISTS);
    }
    /// Puts the cards into the book that every such desktop has.
    static void add(std::initializer_list<const char*> cards)
    {
        GError* error = nullptr;
        ESourceRegistry* registry = e_source_registry_new_sync(nullptr, &error);
        ASSERT_NE(registry, nullptr) << (error ? error->message : "");
        ESource* source = e_source_registry_ref_builtin_address_book(registry);
        EClient* client = e_book_client_connect_sync(source, static_cast<guint32>(-1), nullptr, &error);
        ASSERT_NE(client, nullptr) << (error ? error->message : "");
        for (const char* card : cards) {
            EContact* contact = e_contact_new_from_vcard(card);
            EXPECT_TRUE(
                e_book_client_add_contact_sync(E_BOOK_CLIENT(client), contact, E_BOOK_OPERATION_FLAG_NONE, nullptr, nullptr, &error))
                << (error ? error->message : "");
            g_object_unref(contact);
        }
        g_object_unref(client);
        g_object_unref(source);
        g_object_unref(registry);
    }

private:
    QTemporaryDir m_home;
    std::vector<std::pair<const char*, QByteArray>> m_before;
    GTestDBus* m_bus = nullptr;
};

TEST_F(DesktopBookTest, aDesktopWithoutSuchAServerHasNobodyAndNoTrouble)
{
    startBus(nullptr);
    const AddressBookPeople book = DesktopBook().people([](double) { return true; });
    EXPECT_TRUE(book.people.empty());
    EXPECT_EQ(book.troubles.join("|").toStdString(), "");
}

TEST_F(DesktopBookTest, peopleOfTheDesktopsBookAreRead)
{
    if (!hasServer())
        GTEST_SKIP() << "evolution-data-server is not installed";
    startBus(services);
    add({"BEGIN:VCARD\r\nVERSION:3.0\r\nN:Quill;Ada;;;\r\nFN:Ada Quill\r\nTEL;TYPE=CELL:07700 1\r\nEMAIL:ada@example.com\r\n"
         "ADR;TYPE=HOME:;;12 Mill Lane;Hexworth;Northshire;HX1 2AB;UK\r\nEND:VCARD\r\n",
        "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Everybody\r\nX-EVOLUTION-LIST:TRUE\r\nEMAIL:ada@example.com\r\nEND:VCARD\r\n",
        "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;;;;\r\nFN:Tärn Ltd\r\nORG:Tärn Ltd\r\nEND:VCARD\r\n"});
    const AddressBookPeople book = DesktopBook().people([](double) { return true; });
    EXPECT_EQ(book.troubles.join("|").toStdString(), "");
    ASSERT_EQ(book.people.size(), 2u);
    const auto ada = std::find_if(book.people.begin(), book.people.end(), [](const Person& each) { return each.lastName == "Quill"; });
    ASSERT_NE(ada, book.people.end());
    EXPECT_EQ(ada->firstName, "Ada");
    ASSERT_EQ(ada->phones.size(), 1u);
    EXPECT_EQ(ada->phones[0].label, "mobile");
    ASSERT_EQ(ada->addresses.size(), 1u);
    EXPECT_EQ(ada->addresses[0].city, "Hexworth");
    EXPECT_TRUE(QString::fromStdString(ada->uniqueId).endsWith(":ABPerson"));
    EXPECT_TRUE(std::any_of(book.people.begin(), book.people.end(), [](const Person& each) { return each.lastName == "Tärn Ltd"; }));
}

} // namespace

#else

TEST(DesktopBookTest, withoutItsLibraryThereIsNobodyAndNoTrouble)
{
    EXPECT_TRUE(DesktopBook().people([](double) { return true; }).people.empty());
    EXPECT_TRUE(DesktopBook().people([](double) { return true; }).troubles.isEmpty());
}

#endif
