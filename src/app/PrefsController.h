// Every setting of the user and of the open database: loading, answering, committing.
//
// The form holds the values; the getters answer from it, so an edited value counts before it is committed. readDefaults() brings
// the committed store and the database's own values into the form, OKButton() writes them back; it runs again at quit.
#pragma once

#include "app/PrefsForm.h"
#include "app/TaxRateTable.h"
#include "desktop/Desktop.h"
#include "storage/FolderProperties.h"
#include "storage/Settings.h"

#include <QObject>

#include <functional>
#include <map>
#include <vector>

class Notepad;
class SortSettings;
class qvDataSource;
struct RgbColour;

struct PrefsNeeds {
    SettingsStore& store;
    DatabaseProperties& properties;
    Alerts& alerts;
    FilePanels& panels;
    const User& user;
    const SortSettings& sorting;
    Beeper& beeper;
    const MoneyFormatter& money;
    /// The lists whose columns the settings show, hide and name.
    qvDataSource& orders;
    qvDataSource& lines;
    /// Saves and closes the open database and opens the one at the location setting.
    std::function<void()> switchDatabase;
    /// Whether what travels with the database in that folder may be written now.
    std::function<bool(const QString& folder)> mayWriteInto;
    /// Read and saved with the settings.
    Notepad& notepad;
};

class PrefsController : public QObject, public SettingsForm {
    Q_OBJECT
public:
    explicit PrefsController(PrefsNeeds needs);

    PrefsForm form;
    NewDatabaseForm newDatabase;
    /// The table of tax rates as a list on screen.
    TaxRateTable taxTable;

    void readDefaults();
    /// Takes the tax table with the handling of tax, the statuses and their colours from there, each only where the user never saved nor
    /// edited their own.
    void takeOverUnsaved(const PlistValue& offered);
    /// Commits everything: when the person confirms the settings, and at quit.
    void OKButton();
    /// Opens the settings window.
    void openWindow();
    /// Day first or month first from now on, in the form and on disk at once: the chooser of the first new order or contact.
    void chooseDateFormat(PrefsForm::DateFormatChoice choice);
    void switchDateFormat();
    /// Hands the user's lists to the pop-ups that show them.
    void populateLists();
    void applyBOMTableHeadingChanges();
    /// The location setting, in the form and in the store; it counts from the next load.
    void setDbLocation(const QString& path);
    /// The open database is about to be left: what was edited of what travels with it is committed first.
    void keepDatabaseProperties();
    /// The database at the location setting is about to be read: what travels with it is read, and written, from now on.
    void readDatabaseProperties();
    /// The database was opened and may be written: a folder that was made for it only then gets what travels with it.
    void completeDatabaseProperties();

    // The tax-rate table
    void addTaxRate();
    /// Takes the row away; nothing when there is no such row.
    void deleteTaxRate(int row);
    /// column: "code", "description" or "rate".
    void setTaxRateValue(std::string_view column, int row, std::string_view value);

    // Colours of order statuses
    /// Shows the colour of the status chosen in the form.
    void statusSelectorHasChanged();
    /// Of the status chosen in the form; none when it was never given one.
    std::optional<RgbColour> chosenStatusColour() const;
    /// The same; white when there is none.
    RgbColour shownStatusColour() const;
    void setColorForStatus(const RgbColour& colour);

    // Databases
    /// Lists the databases of the user's folder anew.
    void listDatabases();
    /// Gives the selected database another display name.
    void renameDatabase(const QString& name);
    void newDatabaseMenuItem();
    void selectDbLocation();
    void createDbLocation();
    void setDbLocationToDefault();
    /// The files and folders of the address book.
    QStringList addressBookPaths() const { return form.addressBook.titles(); }
    /// False when a place was chosen that is opened only at the next load.
    bool isFormsLocationOpen() const;

    std::string getCurrency() const override;
    std::string getCurrencyCode() const override;
    std::string getOrderPrefix() const override;
    std::string getItemPrefix() const override;
    std::string getContactPrefix() const override;
    std::string getStockWarn() const override;
    std::string getTermOrder() const override;
    std::string getTermItem() const override;
    std::string getTaxStatement() const override;
    /// The folder of the open database, the default one when none is set; "~" is not expanded.
    std::string getDbLocation() const override;
    const std::vector<TaxRate>& getTaxRates() const { return m_taxRates; }
    std::optional<std::string> getTaxRateForCode(std::string_view code) const override;
    std::optional<std::string> getRateForShipping() const override;
    QStringList getStatusList() const override;
    QStringList getInvoiceCategoryList() const override;
    std::optional<QStringList> getContactTypeList() const override;
    bool getDefaultSortNew() const override;
    bool isUKFormat() const override;
    bool handlesTax() const override;
    std::string getDatabaseName() const override;
    /// The open database's folder, whose "info.plist" is read and written; "~" expanded.
    QString actualDbLocation() const;

Q_SIGNALS:
    /// The lists of statuses, contact types and bill categories are to be shown anew.
    void listsChanged();
    /// The user's words changed.
    void wordsChanged();
    void dateFormatChanged();
    void taxRatesChanged();
    /// A database has another display name.
    void databaseRenamed();
    /// Another status was chosen, or the colour of the chosen one.
    void statusColourChanged();
    /// Which status counts as complete was chosen.
    void completeStatusChanged();

private:
    void connectForm();
    void connectDatabases();
    void connectAddressBook();
    void readAddressBook();
    void addToAddressBook(const std::optional<QString>& path);
    void removeFromAddressBook();
    void storeAddressBook();
    void checkValues();
    void registerDefaults();
    void readOwnDefaults();
    void offerStatuses();
    void checkShippingCode();
    void storeStatusColour(const RgbColour& colour);
    void showStatusColour();
    void takeColourParts();
    void deleteSelectedRate();
    /// What is wrong with a typed part of a colour.
    static QString colourPartFault(std::string_view text);
    QString newDatabaseName() const;
    void checkNewName();
    void readColumns();
    void removeHiddenColumns();
    void readTax();
    void readHandlesTax();
    void readTaxRates();
    void readPricesInclusive();
    void readChoices();
    void readText(TextField& field, const char* key);
    void readOwnText(TextField& field, const char* key);
    enum class CopyToUser { no, yes };
    void readDatabaseText(TextField& field, CopyToUser copy);
    void writeStandardRate();
    /// Writes into the folder's "info.plist", unless the database there is read-only or somebody else's.
    void writeProperty(const QString& folder, const QString& text, std::string_view key);
    void writeDatabaseTexts();
    void writeDatabaseText(const TextField& field);
    bool isTaxUntouched() const;
    bool areStatusesUntouched() const;
    /// Puts the value into the store; false when there is none.
    bool takeOver(const PlistValue& offered, const char* key);
    void writeTaxRates();
    QString expanded(const QString& path) const;
    void makeDefaultFolders();
    void writeDateFormat();
    void showDateFormat();
    void showPrices();
    void enableTaxControls();
    void commit(const TextField& field);
    QString supportFolder() const;
    QString shownName(const QString& folder) const;
    void selectDatabase();
    void makeNewDatabase();
    void chooseDbLocation(const char* title, const char* prompt, const char* nameLabel, const char* fileType, SavePanel::What what);
    /// What the form says is the location from now on.
    void switchToFormsLocation();

    PrefsNeeds m_needs;
    SettingsStore& m_store;
    DatabaseProperties& m_properties;
    /// What is in the folder, as form.databases lists it.
    QStringList m_databaseFiles;
    /// The folder that per-database values are read from and written to, "~" not expanded.
    QString m_actualDbLocation;
    /// What travels with the open database, by the names of the fields, as it was read or committed last.
    std::map<QString, QString> m_committedTexts;
    /// The date format was chosen in the form; until then its setting stays absent.
    bool m_dateFormatChosen = false;
    qvDataSource& m_orders;
    qvDataSource& m_lines;
    std::vector<TaxRate> m_taxRates;
};
