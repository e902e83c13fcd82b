#include "ui/shell/MenuLetters.h"

#include <QKeySequence>
#include <QMenu>

namespace {

/// Upper case; empty when the text has none.
QString letterOf(const QString& text)
{
    const QKeySequence keys = QKeySequence::mnemonic(text);
    return keys.isEmpty() ? QString() : QString(QChar(keys[0].key()));
}

/// Where a letter stands that is not taken, -1 when there is none.
qsizetype freePlace(const QString& text, const QString& taken, bool onlyBeginnings)
{
    for (qsizetype place = 0; place < text.size(); ++place) {
        const bool begins = place == 0 || text[place - 1].isSpace();
        if (text[place].isLetterOrNumber() && (begins || !onlyBeginnings) && !taken.contains(text[place].toUpper()))
            return place;
    }
    return -1;
}

} // namespace

QString menuLetters::mark(const QString& text, QString& taken)
{
    qsizetype place = freePlace(text, taken, true);
    if (place < 0)
        place = freePlace(text, taken, false);
    if (place < 0)
        return text;
    taken += text[place].toUpper();
    QString marked = text;
    return marked.insert(place, '&');
}

void menuLetters::give(QMenu& menu)
{
    QString taken;
    for (const QAction* command : menu.actions())
        taken += letterOf(command->text());
    for (QAction* command : menu.actions()) {
        if (!command->isSeparator() && letterOf(command->text()).isEmpty())
            command->setText(mark(command->text(), taken));
        if (command->menu())
            give(*command->menu());
    }
}
