// A picture in a form, in a dashed frame: drop one on it, or paste one while it has the keyboard. What happens with what is offered is up
// to whoever listens.
#pragma once

#include <QFrame>
#include <QImage>

class QMimeData;

class PictureWell : public QFrame {
    Q_OBJECT
public:
    /// hint: what stands there while there is no picture.
    explicit PictureWell(const QString& hint, QWidget* parent = nullptr);

    const QImage& picture() const { return m_picture; }
    /// Shown as large as there is room, never larger than it is; a null picture shows the hint.
    void setPicture(const QImage& picture);
    /// Offers what is on the clipboard.
    void paste();

    QSize sizeHint() const override { return {280, height}; }

Q_SIGNALS:
    /// The data is gone when the signal returns.
    void offered(const QMimeData& data);
    /// Delete or Backspace.
    void removalWanted();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void scale();

    static constexpr int height = 156;
    static constexpr int inset = 8;
    QString m_hint;
    QImage m_picture;
    /// Small enough to be scaled again whenever the window changes its size.
    QImage m_preview;
    /// As it is painted, in device pixels.
    QImage m_scaled;
};
