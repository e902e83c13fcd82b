// The window that shows a tip in the middle of the screen.
#pragma once

#include <QWidget>

class TipsForm;

class TipsWindow : public QWidget {
    Q_OBJECT
public:
    explicit TipsWindow(TipsForm& form);

    /// Comes to the front, in the middle of the given window.
    void showOver(const QWidget& window);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    TipsForm& m_form;
};
