// Rows of a list on the clipboard.
#pragma once

class QAbstractItemView;

/// Copies what the selected rows show; without any the clipboard stays as it is.
void copyRows(const QAbstractItemView& list);
