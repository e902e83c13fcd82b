// A white card with a fine frame and round corners, around a table inside an editor; and a dashed frame to drop files on.
#pragma once

#include <QFrame>

class IconLabel;
class Label;
class QHBoxLayout;
class QLineEdit;
class QVBoxLayout;

class CardFrame : public QFrame {
    Q_OBJECT
public:
    explicit CardFrame(QWidget* content, QWidget* parent = nullptr);

    /// Puts a quiet field under the table, for typing a new line. The card keeps it; its line is told by lineTyped().
    QLineEdit* addLineField(const QString& placeholder);
    /// Something more at the end of the strip with the line field.
    void addBesideLineField(QWidget* widget);

Q_SIGNALS:
    /// Return in the line field; the field is left as it is.
    void lineTyped(const QString& text);

private:
    QVBoxLayout* m_column;
    QHBoxLayout* m_lineRow = nullptr;
};

/// Where files are dropped. What happens with them is up to whoever listens.
class DropArea : public QFrame {
    Q_OBJECT
public:
    DropArea(const QString& iconName, const QString& title, const QString& hint, QWidget* parent = nullptr);
    void setTitle(const QString& title);

Q_SIGNALS:
    /// Paths of the local files dropped, in the order they came.
    void filesDropped(const QStringList& paths);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    Label* m_title;
};
