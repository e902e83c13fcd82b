// Writes contacts into a file that mailing programs read: address, first name, surname and title of each.
#pragma once

#include <QString>

#include <vector>

class Contact;
class FilePanels;

class EmailExporter {
public:
    explicit EmailExporter(FilePanels& panels) : m_panels(panels) { }

    void setCollection(std::vector<const Contact*> contacts) { m_contacts = std::move(contacts); }
    /// Asks for a file and writes the list into it, whole or not at all. What came of it in one sentence, empty when it was cancelled.
    QString exportCSV() const;

private:
    FilePanels& m_panels;
    std::vector<const Contact*> m_contacts;
};
