// Any bytes give people, whose details fit a contact; what could not be read is told by its line.
#include "Fuzz.h"
#include "contacts/AddressBookDetails.h"
#include "contacts/VcardReader.h"
#include "foundation/Text.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    quieten();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const std::string_view input = inputText(data, size);
    const VcardPeople read = readVcards(input);
    expect(read.people.empty() || read.hasCards, "people stand in cards");
    for (const VcardTrouble& trouble : read.troubles)
        expect(trouble.line >= 1 && static_cast<std::size_t>(trouble.line) <= size, "a trouble is told by a line of the file");
    for (const Person& person : read.people) {
        Contact contact;
        setContactDetailsFromAB(contact, person);
        for (const char* field : {"name", "add1", "add2", "add3", "county", "postcode", "country", "phone", "mobile", "email"})
            expect(isCleanUtf8(contact.getFieldByName(field)), "a contact's texts are fit for the files");
        expect(isCleanUtf8(person.uniqueId), "an identifier is fit for a reference");
    }
    return 0;
}
