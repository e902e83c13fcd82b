#include "ui/FirstResponder.h"

#include "app/Vendaro.h"
#include "documents/rtf/RichText.h"
#include "storage/RecordListModel.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTextEdit>

namespace {

const qvDataSource* listAround(const QWidget* widget)
{
    for (; widget; widget = widget->parentWidget()) {
        const auto* view = qobject_cast<const QAbstractItemView*>(widget);
        if (const auto* model = view ? qobject_cast<const RecordListModel*>(view->model()) : nullptr)
            return &model->source();
    }
    return nullptr;
}

std::shared_ptr<const QTextDocument> textIn(const QWidget* widget)
{
    if (const auto* rich = qobject_cast<const QTextEdit*>(widget))
        return copyOf(*rich->document());
    QString words;
    if (const auto* page = qobject_cast<const QPlainTextEdit*>(widget))
        words = page->toPlainText();
    else if (const auto* field = qobject_cast<const QLineEdit*>(widget))
        words = field->displayText();
    else
        return nullptr;
    std::unique_ptr<QTextDocument> text = makeSealedDocument();
    text->setPlainText(words);
    return text;
}

/// The name of the widget, or of the list it stands in, or of its window.
QString titleOf(const QWidget* widget)
{
    for (const QWidget* named = widget; named && !named->isWindow(); named = named->parentWidget()) {
        if (!named->accessibleName().isEmpty())
            return named->accessibleName();
    }
    return widget->window()->windowTitle();
}

} // namespace

FrontView firstResponder()
{
    const QWidget* widget = QApplication::focusWidget();
    if (!widget)
        return {};
    if (const qvDataSource* list = listAround(widget))
        return {titleOf(widget), list, nullptr};
    return {titleOf(widget), nullptr, textIn(widget)};
}

void addPrintKey(QWidget* window, Vendaro& vendaro)
{
    auto* print = new QAction(window);
    print->setShortcut(QKeySequence::Print);
    QObject::connect(print, &QAction::triggered, window, [&vendaro] { vendaro.printMenuItem(); });
    window->addAction(print);
}
