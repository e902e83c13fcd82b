// A list on paper, as it is shown: visible columns over the width of the page, visible rows in their order, the headings again on every
// page, a title before them and the page's number below.
#pragma once

#include "documents/Paginator.h"

#include <QRectF>
#include <QString>

#include <vector>

class qvDataSource;
struct ListColumn;

class ListPages {
public:
    /// The list must not change while this is used. Of the setup only the paper and the margins count.
    ListPages(const qvDataSource& list, const QString& title, const PageSetup& setup = {});

    int pageCount() const;
    /// Paints the pages the device asks for; false when the device cannot be painted on.
    bool paint(QPagedPaintDevice& device) const;
    /// One page, counted from 0, in points from the paper's upper left corner.
    void paintPage(QPainter& painter, int page) const;

private:
    struct Column {
        const ListColumn* shown;
        /// Points from the left margin.
        qreal left;
        qreal width;
    };

    void layOutColumns();
    qreal rowsTop(int page) const;
    int rowsOn(int page) const;
    int firstRowOn(int page) const;
    void paintHeadings(QPainter& painter, qreal top) const;
    void paintRow(QPainter& painter, int row, qreal top) const;
    void paintCell(QPainter& painter, const Column& column, const QString& text, qreal top) const;

    const qvDataSource& m_list;
    QString m_title;
    PageSetup m_setup;
    /// Within the margins, in points.
    QRectF m_body;
    std::vector<Column> m_columns;
};
