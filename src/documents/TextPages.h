// A text on paper, as it is written, with a title above and the page's number below on every page.
#pragma once

#include "documents/Paginator.h"

#include <QRectF>
#include <QString>

class TextPages {
public:
    /// Of the setup only the paper and the margins count. Works on a copy of the text.
    TextPages(const QTextDocument& text, const QString& title, const PageSetup& setup = {});

    int pageCount() const { return m_pages.pageCount(); }
    /// Paints the pages the device asks for; false when the device cannot be painted on.
    bool paint(QPagedPaintDevice& device) const;

private:
    void paintPage(QPainter& painter, int page) const;

    QString m_title;
    PageSetup m_setup;
    /// Within the margins, in points.
    QRectF m_body;
    Paginator m_pages;
};
