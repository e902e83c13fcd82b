#include "ui/notepad/FormatBar.h"

#include "ui/kit/Fields.h"
#include "ui/kit/Icons.h"
#include "ui/kit/Look.h"
#include "ui/kit/SearchField.h"
#include "ui/kit/Theme.h"
#include "ui/notepad/NotepadText.h"
#include "ui/notepad/ReadableColours.h"

#include <QActionGroup>
#include <QColorDialog>
#include <QMenu>
#include <QPainter>
#include <QToolButton>

#include <array>

namespace {

constexpr int sizeWidth = 88;
constexpr int searchWidth = 220;
constexpr int sampleSize = 16;
/// In points.
constexpr std::array offeredSizes {9, 10, 11, 12, 13, 14, 16, 18, 20, 24, 28, 36, 48};

struct TextColour {
    const char* name;
    QRgb rgb;
};
/// Of the text in the file; all of them can be read on white paper.
constexpr TextColour textColours[] {
    {QT_TRANSLATE_NOOP("FormatBar", "&Red"), 0xb3261e},
    {QT_TRANSLATE_NOOP("FormatBar", "&Orange"), 0xa04a00},
    {QT_TRANSLATE_NOOP("FormatBar", "&Green"), 0x1b6e3f},
    {QT_TRANSLATE_NOOP("FormatBar", "&Blue"), 0x1f56c4},
    {QT_TRANSLATE_NOOP("FormatBar", "&Violet"), 0x6d3fb0},
    {QT_TRANSLATE_NOOP("FormatBar", "Gr&ey"), 0x5b6470},
};

/// A round sample of the colour as the notepad shows it now.
QIcon sampleOf(const QColor& colour)
{
    QPixmap sample(sampleSize, sampleSize);
    sample.fill(Qt::transparent);
    QPainter painter(&sample);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ReadableColours::readable(colour, themeColour(Colour::surface)));
    painter.drawEllipse(2, 2, sampleSize - 4, sampleSize - 4);
    return sample;
}

} // namespace

FormatBar::FormatBar(NotepadText* text, QWidget* window) : ToolBar(tr("Tool bar"), window), m_text(text)
{
    setObjectName("notepadToolBar");
    setShownParts(Show::iconOnly);
    setIconSize({16, 16});
    addStyles();
    addSeparator();
    addSizes();
    addColours();
    addSeparator();
    addAlignments();
    addFlexibleGap();
    addSearch();
    connect(text, &QTextEdit::currentCharFormatChanged, this, &FormatBar::showFormat);
    connect(text, &QTextEdit::cursorPositionChanged, this, &FormatBar::showFormat);
    showFormat();
}

QAction* FormatBar::addSwitch(const char* name, const QString& title, const char* icon, const QKeySequence& keys)
{
    auto* action = new QAction(Icons::get(QLatin1String(icon)), title, this);
    action->setObjectName(QLatin1String(name));
    action->setCheckable(true);
    action->setShortcut(keys);
    addCommand(action);
    return action;
}

void FormatBar::addStyles()
{
    m_bold = addSwitch("bold", tr("Bold"), "format-text-bold", QKeySequence::Bold);
    m_italic = addSwitch("italic", tr("Italic"), "format-text-italic", QKeySequence::Italic);
    m_underline = addSwitch("underline", tr("Underline"), "format-text-underline", QKeySequence::Underline);
    connect(m_bold, &QAction::triggered, this, [this](bool on) {
        QTextCharFormat format;
        format.setFontWeight(on ? QFont::Bold : QFont::Normal);
        apply(format);
    });
    connect(m_italic, &QAction::triggered, this, [this](bool on) {
        QTextCharFormat format;
        format.setFontItalic(on);
        apply(format);
    });
    connect(m_underline, &QAction::triggered, this, [this](bool on) {
        QTextCharFormat format;
        format.setFontUnderline(on);
        apply(format);
    });
}

void FormatBar::addSizes()
{
    m_size = new ChoiceBox;
    m_size->setObjectName("size");
    m_size->setAccessibleName(tr("Size"));
    m_size->setToolTip(tr("Size in points"));
    m_size->setFixedWidth(sizeWidth);
    for (const int size : offeredSizes)
        m_size->addItem(QString::number(size), size);
    addWidget(m_size);
    connect(m_size, &QComboBox::activated, this, [this](int index) {
        QTextCharFormat format;
        format.setFontPointSize(m_size->itemData(index).toInt());
        apply(format);
    });
}

void FormatBar::addColours()
{
    m_colour = new QToolButton;
    m_colour->setObjectName("colour");
    m_colour->setIcon(Icons::get("format-text-color"));
    m_colour->setAccessibleName(tr("Colour"));
    m_colour->setToolTip(tr("Colour"));
    m_colour->setFocusPolicy(Qt::TabFocus);
    m_colour->setPopupMode(QToolButton::InstantPopup);
    auto* menu = new QMenu(m_colour);
    // The samples are those of the present look.
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        menu->addAction(sampleOf(themeColour(Colour::text)), tr("&Automatic"), this, [this] { applyColour({}); });
        for (const TextColour& offered : textColours)
            menu->addAction(sampleOf(offered.rgb), tr(offered.name), this, [this, &offered] { applyColour(offered.rgb); });
        menu->addSeparator();
        menu->addAction(tr("O&ther Colour…"), this, &FormatBar::chooseAnyColour);
    });
    m_colour->setMenu(menu);
    addWidget(m_colour);
}

void FormatBar::addAlignments()
{
    m_alignment = new QActionGroup(this);
    const auto add = [this](const char* name, const QString& title, const char* icon, const char* keys, Qt::Alignment alignment) {
        QAction* action = addSwitch(name, title, icon, QKeySequence(QLatin1String(keys)));
        action->setData(QVariant::fromValue(static_cast<int>(alignment)));
        m_alignment->addAction(action);
        connect(action, &QAction::triggered, m_text, [this, alignment] { m_text->setAlignment(alignment); });
    };
    add("alignLeft", tr("Left"), "format-justify-left", "Ctrl+L", Qt::AlignLeft);
    add("alignCentre", tr("Centre"), "format-justify-center", "Ctrl+E", Qt::AlignHCenter);
    add("alignRight", tr("Right"), "format-justify-right", "Ctrl+R", Qt::AlignRight);
}

void FormatBar::addSearch()
{
    m_search = new SearchField(tr("Find"));
    m_search->setObjectName("find");
    m_search->setFixedWidth(searchWidth);
    addWidget(m_search);
    connect(m_search, &QLineEdit::textEdited, this, [this](const QString& words) { showFound(m_text->findTyped(words)); });
    connect(m_search, &QLineEdit::returnPressed, this, &FormatBar::findNext);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& words) {
        if (words.isEmpty())
            showFound(true);
    });
}

void FormatBar::findNext()
{
    find(NotepadText::Direction::next);
}

void FormatBar::findPrevious()
{
    find(NotepadText::Direction::previous);
}

void FormatBar::find(NotepadText::Direction direction)
{
    if (m_search->text().isEmpty())
        m_search->setFocus();
    else
        showFound(m_text->find(m_search->text(), direction));
}

void FormatBar::showFound(bool found)
{
    look::setFault(m_search, found ? look::Fault::none : look::Fault::wrong);
    m_search->setToolTip(found ? QString() : tr("The notepad has no such words."));
    m_search->setAccessibleDescription(m_search->toolTip());
}

void FormatBar::apply(const QTextCharFormat& format)
{
    m_text->mergeCurrentCharFormat(format);
    m_text->setFocus();
}

void FormatBar::applyColour(const QColor& colour)
{
    QTextCharFormat format;
    // Without a colour of its own it has that of the page.
    format.setForeground(colour.isValid() ? QBrush(colour) : QBrush(Qt::NoBrush));
    apply(format);
}

void FormatBar::chooseAnyColour()
{
    QColorDialog dialog(m_text->currentCharFormat().foreground().color(), window());
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    dialog.setWindowTitle(tr("Colour of the text"));
    if (dialog.exec() == QDialog::Accepted)
        applyColour(dialog.selectedColor());
}

void FormatBar::showFormat()
{
    const QTextCharFormat format = m_text->currentCharFormat();
    m_bold->setChecked(format.fontWeight() >= QFont::DemiBold);
    m_italic->setChecked(format.fontItalic());
    m_underline->setChecked(format.fontUnderline());
    const qreal size = format.fontPointSize() > 0 ? format.fontPointSize() : m_text->document()->defaultFont().pointSizeF();
    m_size->setPlaceholderText(QString::number(size));
    m_size->setCurrentIndex(m_size->findText(QString::number(size)));
    for (QAction* action : m_alignment->actions())
        action->setChecked(m_text->alignment() & Qt::Alignment(action->data().toInt()));
}

void FormatBar::setEditable(bool editable)
{
    for (QAction* action : {m_bold, m_italic, m_underline})
        action->setEnabled(editable);
    m_alignment->setEnabled(editable);
    m_size->setEnabled(editable);
    m_colour->setEnabled(editable);
}
