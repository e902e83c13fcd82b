// Every setting of the user and of the open database: loading, answering, committing.
//
// The form holds the values; the getters answer from it, so an edited value counts before it is committed. readDefaults() brings
// the committed store and the database's own values into the form, OKButton() writes them back; it runs again at quit.
#pragma once

#include "app/PrefsForm.h"
#include "storage/FolderProperties.h"
#include "storage/Settings.h"

#include <QObject>

#include <vector>

class qvDataSource;

struct TaxRate {
    std::string code;
    std::string description;
    std::string rate;
};

class PrefsController : public QObject, public SettingsForm {
    Q_OBJECT
public:
    /// home is what "~" stands for. The lists are those whose columns the settings show, hide and name.
    PrefsController(SettingsStore& store, DatabaseProperties& properties, QString home, qvDataSource& orders, qvDataSource& lines);

    PrefsForm form;

    void readDefaults();
    void OKButton();
    /// Day first or month first from now on, in the form and on disk at once: the chooser of the first new order or contact.
    void chooseDateFormat(PrefsForm::DateFormatChoice choice);
    void switchDateFormat();
    /// Hands the user's lists to the pop-ups that show them.
    void populateLists();
    void applyBOMTableHeadingChanges();
    /// The location setting, and with it the folder that per-database values go to.
    void setDbLocation(const QString& path);
    /// Reads the values that travel with the database that was opened.
    void readDatabaseProperties();

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
    /// The folder whose "info.plist" is read and written, "~" expanded.
    QString actualDbLocation() const;

Q_SIGNALS:
    /// The lists of statuses, contact types and bill categories are to be shown anew.
    void listsChanged();
    /// The user's words or headings changed.
    void wordsChanged();
    void dateFormatChanged();

private:
    void registerDefaults();
    void readColumns();
    void removeHiddenColumns();
    void readTax();
    void readTaxRates();
    void readPricesInclusive();
    void readChoices();
    void readText(TextField& field, const char* key);
    void readOwnText(TextField& field, const char* key);
    enum class CopyToUser { no, yes };
    void readDatabaseText(TextField& field, const char* key, CopyToUser copy);
    void writeStandardRate();
    void writeDatabaseText(const TextField& field, const char* key);
    void writeTaxRates();
    QString expanded(QString path) const;
    void makeDefaultFolders();
    void writeDateFormat();
    void showDateFormat();
    void showPrices();
    void enableTaxControls();
    void commit(const TextField& field);

    SettingsStore& m_store;
    DatabaseProperties& m_properties;
    QString m_home;
    /// The folder that per-database values are read from and written to, "~" not expanded.
    QString m_actualDbLocation;
    /// The date format was chosen in the form; until then its setting stays absent.
    bool m_dateFormatChosen = false;
    qvDataSource& m_orders;
    qvDataSource& m_lines;
    std::vector<TaxRate> m_taxRates;
};
