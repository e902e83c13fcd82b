// The window of one document made from a template: the paper, and commands to print it and to save it as PDF.
#pragma once

#include <QMainWindow>

class BackgroundImageTextView;
class CustomInvoiceController;
class QScrollArea;

class DocumentWindow : public QMainWindow {
    Q_OBJECT
public:
    /// The document is deleted with its window, and the window closes when the document goes.
    explicit DocumentWindow(CustomInvoiceController* document);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeToolBar();
    void makePaper();
    QWidget* withDamage(QWidget* desk);

    CustomInvoiceController* m_document;
    QScrollArea* m_desk;
    BackgroundImageTextView* m_paper;
};
