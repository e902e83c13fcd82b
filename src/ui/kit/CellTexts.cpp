#include "ui/kit/CellTexts.h"

#include <QFontMetrics>
#include <QGuiApplication>

#include <algorithm>
#include <memory>

namespace {

bool breaksLine(QChar character)
{
    return character == '\n' || character == '\r' || character == '\t' || character == QChar::LineSeparator
        || character == QChar::ParagraphSeparator;
}

std::unique_ptr<QTextLayout> layOutCell(QString text, int width, const QFont& font)
{
    std::replace_if(text.begin(), text.end(), breaksLine, QChar(' '));
    auto layout = std::make_unique<QTextLayout>(QFontMetrics(font).elidedText(text, Qt::ElideRight, width), font);
    QTextOption option;
    option.setTextDirection(QGuiApplication::layoutDirection());
    option.setWrapMode(QTextOption::NoWrap);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    layout->setTextOption(option);
    layout->setCacheEnabled(true);
    layout->beginLayout();
    layout->createLine();
    layout->endLayout();
    return layout;
}

} // namespace

const QTextLayout& CellTexts::shown(const QString& text, int width, const QFont& font)
{
    if (font != m_font) {
        m_texts.clear();
        m_font = font;
    }
    const std::pair key(text, width);
    if (const QTextLayout* known = m_texts.object(key))
        return *known;
    QTextLayout* const made = layOutCell(text, width, font).release();
    m_texts.insert(key, made);
    return *made;
}
