// A tool bar that the person arranges: what is in it and in which order, with icons, words or both. The arrangement is kept between runs,
// by the identifiers of what is in it.
#pragma once

#include "ui/shell/ToolBarSheet.h"

#include <QHash>

/// What a bar can hold and how it comes.
struct ToolBarContents {
    /// The name its arrangement is kept under.
    QString keptAs;
    /// By identifier; they are the window's. What has no command here is left out wherever it is named below.
    QHash<QString, QAction*> commands;
    /// Identifiers of the bar as it comes, from left to right.
    QStringList defaults;
    /// Identifiers of what can be in the bar, in the order it is offered.
    QStringList offered;
};

class ArrangedToolBar : public ToolBar {
    Q_OBJECT
public:
    ArrangedToolBar(const QString& name, ToolBarContents contents, QWidget* window);

    /// The sheet that arranges the bar.
    void customise();
    /// The bar as it comes. Of the spaces between what is left out one stays.
    QStringList defaultArrangement() const;

    static constexpr char spaceIdentifier[] = "space";
    static constexpr char flexibleSpaceIdentifier[] = "flexibleSpace";

private:
    void arrange(const QStringList& identifiers);
    void remember();
    QList<ToolBarEntry> entries() const;
    void showMenu(const QPoint& place);
    QString partsKeptAs() const;
    Show rememberedParts() const;

    ToolBarContents m_contents;
    QStringList m_arrangement;
};
