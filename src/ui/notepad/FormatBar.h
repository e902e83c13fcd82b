// The bar over the notepad's text: how the chosen text looks, and the search.
#pragma once

#include "ui/kit/ToolBar.h"
#include "ui/notepad/NotepadText.h"

class ChoiceBox;
class QActionGroup;
class QTextCharFormat;
class QToolButton;
class SearchField;

class FormatBar : public ToolBar {
    Q_OBJECT
public:
    explicit FormatBar(NotepadText* text, QWidget* window);

    /// Whether the text can be changed; the search always works.
    void setEditable(bool editable);
    SearchField* searchField() const { return m_search; }
    void findNext();
    void findPrevious();

private:
    QAction* addSwitch(const char* name, const QString& title, const char* icon, const QKeySequence& keys);
    void addStyles();
    void addSizes();
    void addColours();
    void addAlignments();
    void addSearch();
    /// Gives the chosen text, or what is typed next, that format.
    void apply(const QTextCharFormat& format);
    void applyColour(const QColor& colour);
    void chooseAnyColour();
    /// What the text at the caret looks like.
    void showFormat();
    void find(NotepadText::Direction direction);
    void showFound(bool found);

    NotepadText* m_text;
    QAction* m_bold = nullptr;
    QAction* m_italic = nullptr;
    QAction* m_underline = nullptr;
    ChoiceBox* m_size = nullptr;
    QToolButton* m_colour = nullptr;
    QActionGroup* m_alignment = nullptr;
    SearchField* m_search = nullptr;
};
