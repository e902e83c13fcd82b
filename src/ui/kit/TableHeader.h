// The heading row of a list: headings over their columns' text, the sorted one in text colour with its mark right beside it.
#pragma once

#include <QHeaderView>

class TableHeader : public QHeaderView {
    Q_OBJECT
public:
    explicit TableHeader(QWidget* parent = nullptr);

    /// Distance of the first heading's text from the edge; the columns' delegate uses the same.
    void setFirstInset(int distance);
    int firstInset() const { return m_firstInset; }
    /// Where the heading's words stand in its section.
    QRect headingRect(int section) const;
    /// Where the sort mark stands; empty when the section is not the sorted one.
    QRect sortMarkRect(int section) const;

    QSize sizeHint() const override;
    static constexpr int rowHeight = 32;

protected:
    /// The whole heading as a tool tip, where it is cut.
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    QSize sectionSizeFromContents(int section) const override;

private:
    bool isSorted(int section) const;
    bool isFirst(int section) const;
    Qt::Alignment alignmentOf(int section) const;
    QString headingOf(int section) const;
    QRect sectionRect(int section) const;
    /// The room the words may use: a little more than their section.
    QRect wordsRect(int section) const;

    int m_firstInset;
};
