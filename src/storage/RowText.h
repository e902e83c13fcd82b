// Rows of a list as text for other programs, copied or dragged there.
#pragma once

#include <QModelIndexList>
#include <QString>

#include <memory>

class QMimeData;

/// A line for each row that has a cell among the indexes, in the order the model has them: the texts of all its columns separated by
/// tabs, tabs and line breaks in them turned into blanks.
QString rowText(const QModelIndexList& indexes);

/// The same, ready to be handed over.
std::unique_ptr<QMimeData> rowData(const QModelIndexList& indexes);
