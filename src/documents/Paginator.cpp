#include "documents/Paginator.h"

#include "documents/rtf/RichText.h"

#include <QAbstractTextDocumentLayout>
#include <QLocale>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextDocument>
#include <QTextFrame>

#include <algorithm>
#include <array>

namespace {

constexpr qreal layoutDotsPerInch = 96;
constexpr qreal pointsPerInch = 72;
constexpr qreal layoutUnitsPerPoint = layoutDotsPerInch / pointsPerInch;

/// Texts are measured for 96 dots an inch, whatever the screen has.
QImage& measure()
{
    static QImage image = [] {
        QImage dot(1, 1, QImage::Format_RGB32);
        dot.setDotsPerMeterX(qRound(layoutDotsPerInch / 0.0254));
        dot.setDotsPerMeterY(qRound(layoutDotsPerInch / 0.0254));
        return dot;
    }();
    return image;
}

void setMargins(QTextDocument& document, const QMarginsF& margins)
{
    QTextFrameFormat format = document.rootFrame()->frameFormat();
    format.setLeftMargin(margins.left());
    format.setTopMargin(margins.top());
    format.setRightMargin(margins.right());
    format.setBottomMargin(margins.bottom());
    document.rootFrame()->setFrameFormat(format);
}

/// Elsewhere it is A4.
constexpr std::array letterCountries {QLocale::Belize, QLocale::Canada, QLocale::Chile, QLocale::Colombia, QLocale::CostaRica,
    QLocale::ElSalvador, QLocale::Guatemala, QLocale::Mexico, QLocale::Nicaragua, QLocale::Panama, QLocale::Philippines,
    QLocale::PuertoRico, QLocale::UnitedStates, QLocale::Venezuela};

} // namespace

QPageSize usualPaper(const QString& locale)
{
    // A locale without a country, "C" among them, is taken for one of the many with A4.
    const bool saysCountry = locale.contains('_');
    const bool letter = std::find(letterCountries.begin(), letterCountries.end(), QLocale(locale).territory()) != letterCountries.end();
    return QPageSize(saysCountry && letter ? QPageSize::Letter : QPageSize::A4);
}

QSizeF PageSetup::sheet() const
{
    const QSizeF standing = paper.size(QPageSize::Point);
    return orientation == QPageLayout::Portrait ? standing : standing.transposed();
}

qreal PageSetup::widestMargin() const
{
    const QSizeF size = sheet();
    return std::max(0.0, (std::min(size.width(), size.height()) - pointsPerInch) / 2);
}

PageSetup PageSetup::onPaperOf(const QPagedPaintDevice& device) const
{
    PageSetup setup = *this;
    setup.paper = device.pageLayout().pageSize();
    setup.orientation = device.pageLayout().orientation();
    const qreal widest = setup.widestMargin();
    setup.margins = {std::min(margins.left(), widest), std::min(margins.top(), widest), std::min(margins.right(), widest),
        std::min(margins.bottom(), widest)};
    return setup;
}

void paintPageBackground(QPainter& painter, const PageBackground& background, const QRectF& area)
{
    if (background.image.isNull())
        return;
    const QSizeF own = background.image.size();
    const qreal factor = background.scales ? area.width() / own.width() : 1;
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(area.topLeft(), own * factor), background.image);
    painter.restore();
}

Paginator::Paginator(const QTextDocument& document, const PageSetup& setup, const PageBackground& background)
    : m_document(copyOf(document))
    , m_setup(setup)
    , m_background(background)
{
    m_document->documentLayout()->setPaintDevice(&measure());
    layOut();
}

Paginator::~Paginator() = default;

void Paginator::layOut()
{
    const QSizeF paper = m_setup.sheet();
    const QMarginsF& margins = m_setup.margins;
    const qreal body = std::max(1.0, paper.width() - margins.left() - margins.right());
    setMargins(*m_document, {});
    m_document->setTextWidth(body * layoutUnitsPerPoint);
    const qreal wanted = m_document->documentLayout()->documentSize().width();
    const qreal fit = std::min(1.0, body * layoutUnitsPerPoint / std::max(1.0, wanted));
    m_scale = layoutUnitsPerPoint / fit;
    setMargins(*m_document, margins * m_scale);
    m_document->setPageSize(paper * m_scale);
}

int Paginator::pageCount() const
{
    return m_document->pageCount();
}

qreal Paginator::centringOffset() const
{
    if (!m_setup.verticallyCentred || pageCount() != 1)
        return 0;
    const QMarginsF& margins = m_setup.margins;
    const QTextFrame* root = m_document->rootFrame();
    const qreal bottom = m_document->documentLayout()->blockBoundingRect(root->lastCursorPosition().block()).bottom() / m_scale;
    const qreal free = m_setup.sheet().height() - margins.bottom() - bottom;
    return std::max(0.0, free / 2);
}

void Paginator::paintBackground(QPainter& painter) const
{
    const QRectF paper(QPointF(), m_setup.sheet());
    paintPageBackground(painter, m_background, paper.marginsRemoved(m_setup.margins));
}

void Paginator::paintPage(QPainter& painter, int page) const
{
    paintBackground(painter);
    const QSizeF size = m_document->pageSize();
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    context.clip = QRectF(QPointF(0, page * size.height()), size);
    painter.save();
    painter.translate(0, centringOffset());
    painter.scale(1 / m_scale, 1 / m_scale);
    painter.translate(0, -page * size.height());
    painter.setClipRect(context.clip);
    m_document->documentLayout()->draw(&painter, context);
    painter.restore();
}

bool Paginator::paint(QPagedPaintDevice& device) const
{
    return paintPages(device, m_setup, pageCount(), [this](QPainter& painter, int page) { paintPage(painter, page); });
}

bool paintPages(QPagedPaintDevice& device, const PageSetup& setup, int pages, const PagePainting& paintPage)
{
    QPageLayout wholeSheet(setup.paper, setup.orientation, {}, QPageLayout::Point);
    wholeSheet.setMode(QPageLayout::FullPageMode);
    device.setPageLayout(wholeSheet);
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    const qreal dots = device.logicalDpiX() / pointsPerInch;
    painter.scale(dots, dots);
    bool first = true;
    for (int page = 0; page < pages; ++page) {
        if (!device.pageRanges().isEmpty() && !device.pageRanges().contains(page + 1))
            continue;
        if (!std::exchange(first, false) && !device.newPage())
            return false;
        paintPage(painter, page);
    }
    return painter.end();
}
