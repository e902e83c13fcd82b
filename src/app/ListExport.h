// Writes a list into a file the person chooses, as it is shown: for spreadsheets, as tab-delimited text, or as a page for browsers.
#pragma once

#include <QString>

class FilePanels;
class qvDataSource;

enum class ExportForm { commaSeparated, tabDelimited, html };

class ListExport {
public:
    explicit ListExport(FilePanels& panels) : m_panels(panels) { }

    /// Asks for a file and writes the list into it, whole or not at all. name: what the file is to be called, without its type. What came
    /// of it in one sentence, empty when it was cancelled.
    QString run(const qvDataSource& source, ExportForm form, const QString& name);

private:
    FilePanels& m_panels;
};
