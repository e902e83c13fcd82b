// Says what is being done and how far it is, with a button to stop it.
#pragma once

#include "ui/kit/Sheet.h"

class Button;
class Label;
class QProgressBar;

class ProgressCard : public Sheet {
    Q_OBJECT
public:
    /// stoppable: with a Cancel button, which Esc presses too. mustFinish: without, and Esc does nothing.
    enum class Stopping { stoppable, mustFinish };
    ProgressCard(QWidget* host, const QString& title, Stopping stopping = Stopping::stoppable);

    void setText(const QString& text);
    /// A total of 0 shows that work goes on without saying how far it is.
    void setProgress(int done, int total);
    bool wasCancelled() const { return m_cancelled; }

Q_SIGNALS:
    /// The person wants it stopped. The card stays until whoever opened it finishes it.
    void cancelPressed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void askToStop();

    Label* m_text;
    QProgressBar* m_bar;
    Button* m_cancel = nullptr;
    bool m_cancelled = false;
};
