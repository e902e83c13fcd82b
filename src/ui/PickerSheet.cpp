#include "ui/PickerSheet.h"

#include "storage/qvPicker.h"
#include "ui/FormBinder.h"
#include "ui/HelpTopic.h"
#include "ui/ListBinder.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/Label.h"
#include "ui/kit/Panels.h"
#include "ui/kit/Button.h"
#include "ui/kit/RecordTable.h"
#include "ui/kit/SearchField.h"
#include "ui/kit/Sheet.h"
#include "ui/kit/SheetStack.h"
#include "ui/kit/TableHeader.h"

#include <QScrollBar>
#include <QVBoxLayout>

namespace {

class PickerSheet : public Sheet {
public:
    PickerSheet(qvPicker& picker, QWidget* host)
        // What is chosen goes to the record that is open now: no other may be opened meanwhile.
        : Sheet(host, Blocks::theProgram)
        , m_picker(picker)
    {
        setTitle(picker.form.title());
        helpTopic::set(*this, "search#choosing");
        card()->setFixedSize(660, 520);
        column()->setContentsMargins(0, 24, 0, 0);
        addHead();
        addTable();
        addFooter();
        new FormBinder(picker.form, this);
        connect(&picker.form, &Form::closed, this, [this] {
            if (isOpen())
                accept();
        });
        connect(this, &Sheet::finished, this, [this](int answer) {
            if (answer == cancelled)
                m_picker.cancel();
            deleteLater();
        });
    }

private:
    void addHead()
    {
        auto* head = new QVBoxLayout;
        head->setContentsMargins(24, 0, 24, 16);
        head->setSpacing(12);
        head->addWidget(new Label(m_picker.form.title(), LabelSize::group));
        m_search = new SearchField(tr("Search"));
        m_search->setObjectName("search");
        m_search->setAccessibleName(tr("Search"));
        head->addWidget(m_search);
        column()->addLayout(head);
        column()->addWidget(new Hairline);
        setFirstFocus(m_search);
    }

    void addTable()
    {
        auto* table = new RecordTable(RecordTable::Place::sheet);
        table->setSelectionMode(QAbstractItemView::SingleSelection);
        table->setAccessibleName(m_picker.form.title());
        table->tableHeader()->setStretchLastSection(true);
        shareWidth(card()->width() - table->verticalScrollBar()->sizeHint().width());
        auto* binder = new ListBinder(m_picker, table);
        m_search->steer(table);
        table->setEmptyText(tr("Nothing found"));
        connect(&binder->model(), &QAbstractItemModel::modelReset, this, &PickerSheet::showCount);
        connect(table, &QAbstractItemView::activated, this, [this] { m_picker.chooseSelected(); });
        column()->addWidget(table, 1);
    }

    void showCount()
    {
        m_footer->setNote(tr("%1 of %2").arg(m_picker.numberOfRows()).arg(m_picker.getCount()));
        m_choose->setEnabled(m_picker.numberOfRows() > 0);
    }

    /// The columns' widths are shares of the room there is.
    void shareWidth(int room)
    {
        int asked = 0;
        for (const ListColumn& column : m_picker.list.columns)
            asked += column.width;
        for (ListColumn& column : m_picker.list.columns)
            column.width = column.width * room / std::max(1, asked);
    }

    void addFooter()
    {
        m_footer = new FooterBar(FooterBar::Place::sheet);
        auto* cancelButton = new Button(tr("Cancel"));
        cancelButton->setObjectName("cancel");
        m_choose = new PrimaryButton(tr("Choose"));
        m_choose->setObjectName("choose");
        m_footer->addRight(cancelButton);
        m_footer->addRight(m_choose);
        setDefaultButton(m_choose);
        column()->addWidget(m_footer);
        showCount();
    }

    qvPicker& m_picker;
    SearchField* m_search = nullptr;
    FooterBar* m_footer = nullptr;
    QPushButton* m_choose = nullptr;
};

} // namespace

PickerPresenter::PickerPresenter(qvPicker& picker, QObject* parent) : QObject(parent), m_picker(picker)
{
    connect(&picker.form, &Form::opened, this, &PickerPresenter::present);
}

void PickerPresenter::present()
{
    auto* sheet = new PickerSheet(m_picker, SheetStack::frontWindow());
    sheet->open();
}
