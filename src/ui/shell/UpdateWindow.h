// The window that tells of a newer version and brings it: what is new, how far the download is.
#pragma once

#include <QWidget>

class QProgressBar;
class QTextBrowser;
class UpdateWindowController;

class UpdateWindow : public QWidget {
    Q_OBJECT
public:
    explicit UpdateWindow(UpdateWindowController& updates);
    ~UpdateWindow() override;

    /// Comes to the front, in the middle of the given window.
    void showOver(const QWidget& window);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* makeFoot();
    void showNotes();
    void showProgress(qint64 received, qint64 total);
    void showLoading();

    UpdateWindowController& m_updates;
    QTextBrowser* m_notes;
    QProgressBar* m_bar;
};
