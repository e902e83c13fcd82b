#include "ui/shell/ManualView.h"

#include "ui/kit/FocusRing.h"
#include "ui/kit/Look.h"
#include "ui/kit/Theme.h"

#include <QFileInfo>
#include <QImage>
#include <QScrollBar>
#include <QTextFrame>

#include <algorithm>

namespace {

constexpr int longestLine = 760;
constexpr int sideMargin = 32;
constexpr int topMargin = 20;
/// What is left of a sheet of paper between its margins, at the usual 96 dots an inch.
constexpr int widestOnPaper = 600;
/// In a browser the margins are the body's.
constexpr char marginsInTheView[] = "\nbody { margin: 0px; padding: 0px; }\n";

/// The picture for the dark, where there is one.
QUrl darkPicture(const QUrl& picture)
{
    const QFileInfo file(picture.toLocalFile());
    const QString dark = file.path() + '/' + file.completeBaseName() + "-dark." + file.suffix();
    return QFileInfo(dark).isFile() ? QUrl::fromLocalFile(dark) : picture;
}

} // namespace

ManualView::ManualView(Ground ground, QWidget* parent) : QTextBrowser(parent), m_ground(ground)
{
    setObjectName("page");
    look::setKind(this, "manual");
    setAccessibleName(tr("Page"));
    setOpenExternalLinks(false);
    // As wide as the window, it needs no ring to be found.
    FocusRing::exempt(this);
    connect(this, &QTextBrowser::sourceChanged, this, &ManualView::dressPage);
    connect(&Theme::current(), &Theme::changed, this, &ManualView::reloadInShade);
}

QString ManualView::styleFor(const QString& styleSheet, bool dark)
{
    const qsizetype media = styleSheet.indexOf("@media");
    const qsizetype opened = styleSheet.indexOf('{', media);
    const qsizetype closed = styleSheet.lastIndexOf('}');
    if (media < 0 || opened < 0 || closed <= opened)
        return styleSheet;
    return styleSheet.left(media) + (dark ? styleSheet.mid(opened + 1, closed - opened - 1) : QString());
}

bool ManualView::isDark() const
{
    return m_ground == Ground::screen && Theme::current().shade() == Shade::dark;
}

QVariant ManualView::loadResource(int type, const QUrl& name)
{
    const QUrl address = source().resolved(name);
    if (type == QTextDocument::ImageResource)
        return picture(QTextBrowser::loadResource(type, isDark() ? darkPicture(address) : address));
    const QVariant loaded = QTextBrowser::loadResource(type, address);
    if (type == QTextDocument::StyleSheetResource)
        return QString(styleFor(QString::fromUtf8(loaded.toByteArray()), isDark()) + marginsInTheView);
    return loaded;
}

QVariant ManualView::picture(const QVariant& file) const
{
    const QImage whole = QImage::fromData(file.toByteArray());
    if (m_ground == Ground::screen || whole.width() <= widestOnPaper)
        return whole;
    return whole.scaledToWidth(widestOnPaper, Qt::SmoothTransformation);
}

void ManualView::doSetSource(const QUrl& name, QTextDocument::ResourceType type)
{
    const QUrl address = source().resolved(name);
    if (!address.isLocalFile()) {
        Q_EMIT leftTheManual(address);
        return;
    }
    QTextBrowser::doSetSource(name, type);
}

void ManualView::dressPage(const QUrl& address)
{
    m_marginsFor = -1;
    setMargins();
    // The margins have moved the heading that was asked for.
    if (address.hasFragment())
        scrollToAnchor(address.fragment());
}

void ManualView::resizeEvent(QResizeEvent* event)
{
    QTextBrowser::resizeEvent(event);
    setMargins();
}

void ManualView::setMargins()
{
    const int room = viewport()->width();
    if (room == m_marginsFor)
        return;
    m_marginsFor = room;
    QTextFrame* page = document()->rootFrame();
    QTextFrameFormat format = page->frameFormat();
    format.setLeftMargin(sideMargin);
    format.setTopMargin(topMargin);
    format.setBottomMargin(topMargin);
    format.setRightMargin(std::max(sideMargin, room - sideMargin - longestLine));
    page->setFrameFormat(format);
}

void ManualView::reloadInShade()
{
    const int place = verticalScrollBar()->value();
    reload();
    verticalScrollBar()->setValue(place);
}

bool ManualView::findWords(const QString& words, Direction direction)
{
    const QTextDocument::FindFlags flags = direction == Direction::backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (words.isEmpty() || find(words, flags))
        return true;
    const QTextCursor before = textCursor();
    moveCursor(direction == Direction::backward ? QTextCursor::End : QTextCursor::Start);
    if (find(words, flags))
        return true;
    setTextCursor(before);
    return false;
}

bool ManualView::findWordsHere(const QString& words)
{
    QTextCursor cursor = textCursor();
    cursor.setPosition(cursor.selectionStart());
    setTextCursor(cursor);
    return findWords(words, Direction::forward);
}
