// Lays a document out on pages and paints them, on paper, into a PDF or into a picture alike.
#pragma once

#include <QImage>
#include <QMarginsF>
#include <QPageLayout>

#include <functional>
#include <memory>

class QPagedPaintDevice;
class QPainter;
class QTextDocument;

/// How documents are laid on paper; shared by all documents of a running program, as a template's options change it.
struct PageSetup {
    QPageSize paper {QPageSize::A4};
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    /// Points.
    QMarginsF margins {40, 40, 40, 40};
    bool verticallyCentred = false;

    /// The size of the paper as it stands or lies, in points.
    QSizeF sheet() const;
    /// The widest margin all round that leaves an inch for the text, in points.
    qreal widestMargin() const;
    /// The same on the paper that was chosen for the device; margins that it has no room for are narrower.
    PageSetup onPaperOf(const QPagedPaintDevice& device) const;
};

/// What sheets are where a locale ("en_GB") is spoken: US letter or A4.
QPageSize usualPaper(const QString& locale);

/// What is drawn behind the text.
struct PageBackground {
    QImage image;
    /// As wide as the text area; else in its own size.
    bool scales = false;
};

class Paginator {
public:
    /// Works on a copy of the document; content wider than the text area is made smaller until it fits.
    Paginator(const QTextDocument& document, const PageSetup& setup, const PageBackground& background = {});
    ~Paginator();

    int pageCount() const;
    /// Paints the pages the device asks for; false when the device cannot be painted on.
    bool paint(QPagedPaintDevice& device) const;
    /// One page, counted from 0, in points from the paper's upper left corner.
    void paintPage(QPainter& painter, int page) const;

private:
    void layOut();
    qreal centringOffset() const;
    void paintBackground(QPainter& painter) const;

    std::unique_ptr<QTextDocument> m_document;
    PageSetup m_setup;
    PageBackground m_background;
    /// Layout units a point.
    qreal m_scale = 1;
};

/// Paints one page, counted from 0, in points from the paper's upper left corner.
using PagePainting = std::function<void(QPainter& painter, int page)>;
/// Paints those of so many pages that the device asks for, on whole sheets; false when the device cannot be painted on.
bool paintPages(QPagedPaintDevice& device, const PageSetup& setup, int pages, const PagePainting& paintPage);

/// Draws the background into the rectangle, from its upper left corner.
void paintPageBackground(QPainter& painter, const PageBackground& background, const QRectF& area);
