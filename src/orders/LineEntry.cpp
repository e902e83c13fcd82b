#include "orders/LineEntry.h"

#include "desktop/Alerts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "inventory/Item.h"
#include "inventory/ItemFinder.h"
#include "orders/OrderForm.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr std::size_t mostOffered = 8;

/// What was typed, taken apart: how many, and of what.
struct Typed {
    int count = 1;
    QString words;
};

Typed takenApart(const QString& text)
{
    static const QRegularExpression counted(QStringLiteral("^\\s*(\\d{1,4})\\s*[xX*×]\\s*(\\S.*)$"));
    const QRegularExpressionMatch match = counted.match(text);
    const int count = match.captured(1).toInt();
    return count > 0 ? Typed {count, match.captured(2).trimmed()} : Typed {1, text.trimmed()};
}

QString shownAs(const Item& item)
{
    QStringList parts;
    for (const std::string_view text : {item.getCode(), item.getItem(), item.getVariation()}) {
        if (!text.empty())
            parts += toQString(text).simplified();
    }
    return parts.join(QStringLiteral(" · "));
}

} // namespace

LineEntry::LineEntry(LineEntryNeeds needs) : m_needs(std::move(needs))
{
    m_needs.form.lineEntry.onEdited = [this] { search(); };
    m_needs.form.addLine.run = [this] { enter(); };
    m_needs.form.addFreeLine.run = [this] { enterFree(); };
    clear();
}

bool LineEntry::isEmpty() const
{
    return m_needs.form.lineEntry.text().trimmed().isEmpty();
}

void LineEntry::clear()
{
    m_needs.form.lineEntry.setText({});
    search();
}

void LineEntry::offer(std::vector<Item*> items, int count)
{
    m_offeredCount = count;
    m_offered = std::move(items);
    QStringList titles;
    for (const Item* item : m_offered)
        titles += shownAs(*item);
    ChoiceField& list = m_needs.form.lineMatches;
    list.setIndex(-1);
    list.setTitles(titles);
    list.setVisible(!titles.isEmpty());
}

void LineEntry::search()
{
    const QString text = m_needs.form.lineEntry.text();
    std::vector<Item*> found = m_needs.finder.suggestions(text.toStdString(), mostOffered);
    Typed typed;
    if (found.empty()) {
        typed = takenApart(text);
        found = m_needs.finder.suggestions(typed.words.toStdString(), mostOffered);
    }
    offer(std::move(found), typed.count);
    m_needs.form.lineEntry.setFault({});
    m_needs.form.addLine.setVisible(!isEmpty());
    m_needs.form.addFreeLine.setVisible(!isEmpty());
}

void LineEntry::step(int by)
{
    ChoiceField& list = m_needs.form.lineMatches;
    const int count = static_cast<int>(m_offered.size());
    if (count == 0)
        return;
    list.setVisible(true);
    const int from = list.index() < 0 && by < 0 ? count : list.index();
    list.setIndex(std::clamp(from + by, 0, count - 1));
}

bool LineEntry::leave()
{
    if (m_needs.form.lineMatches.isVisible()) {
        offer({}, 1);
        return true;
    }
    if (m_needs.form.lineEntry.text().isEmpty())
        return false;
    clear();
    return true;
}

void LineEntry::setTyping(bool typing)
{
    m_needs.form.lineMatches.setVisible(typing && !m_offered.empty());
}

void LineEntry::enter()
{
    if (isEmpty())
        return;
    if (const int chosen = m_needs.form.lineMatches.index(); chosen >= 0)
        return add(*m_offered[static_cast<std::size_t>(chosen)], m_offeredCount);
    const QString text = m_needs.form.lineEntry.text();
    Typed typed {1, text.trimmed()};
    std::vector<Item*> found = m_needs.finder.named(typed.words.toStdString());
    if (found.empty()) {
        typed = takenApart(text);
        found = m_needs.finder.named(typed.words.toStdString());
    }
    if (found.size() == 1)
        return add(*found.front(), typed.count);
    if (found.size() > 1) {
        offer(std::move(found), typed.count);
        return refuse(fillText(localText("More than one is called “%@”: choose one of the list."), {typed.words}));
    }
    refuse(fillText(localText("No bar code, code or name is “%@”."), {typed.words}));
}

void LineEntry::add(Item& item, int count)
{
    if (!item.isListed())
        return refuse(localText("This one was deleted meanwhile."));
    if (m_needs.add(item, count))
        done();
}

void LineEntry::enterFree()
{
    if (!isEmpty() && m_needs.addFree(m_needs.form.lineEntry.text().trimmed()))
        done();
}

void LineEntry::done()
{
    clear();
    m_needs.form.focus(m_needs.form.lineEntry);
}

void LineEntry::refuse(const QString& why)
{
    m_needs.beeper.beep();
    m_needs.form.lineEntry.setFault(why);
    m_needs.form.focus(m_needs.form.lineEntry);
}
