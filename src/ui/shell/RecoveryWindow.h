// What the program kept so that nothing is lost: the things in the recovery store, and the earlier states of the open database with
// the records that can be brought back from them.
#pragma once

#include <QWidget>

#include <memory>

class Button;
class FooterBar;
class KeptList;
class MessageBar;
class PickList;
class QProgressBar;
class RecordTable;
class Restoring;
class TextRows;
class UnderlineTabs;
class Vendaro;

class RecoveryWindow : public QWidget {
    Q_OBJECT
public:
    explicit RecoveryWindow(Vendaro& vendaro);
    ~RecoveryWindow() override;

    enum class Tab { kept, earlier };
    void showTab(Tab tab);

private:
    QWidget* makeKeptTab();
    QWidget* makeEarlierTab();
    /// A search field over a table of the rows.
    RecordTable* addTable(QWidget* page, TextRows& rows, const QString& title, const QString& name, const QString& emptyText);
    void listGenerations();
    void lookAtChosen();
    void stopReading();
    void showRead(const QStringList& troubles);
    void showReading();
    void bringBack(bool all);
    void showWhatIsPossible();

    std::unique_ptr<KeptList> m_kept;
    std::unique_ptr<Restoring> m_restoring;
    UnderlineTabs* m_tabs;
    RecordTable* m_keptTable = nullptr;
    PickList* m_generations = nullptr;
    RecordTable* m_differences = nullptr;
    MessageBar* m_trouble = nullptr;
    FooterBar* m_foot = nullptr;
    QProgressBar* m_progress = nullptr;
    Button* m_cancelReading = nullptr;
    Button* m_show = nullptr;
    Button* m_saveCopy = nullptr;
    Button* m_bringBack = nullptr;
    Button* m_bringAllBack = nullptr;
};
