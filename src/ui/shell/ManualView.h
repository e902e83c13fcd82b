// A page of the manual on the screen: dressed in the style sheet of the pages, for the shade of the window, with the pictures for it.
#pragma once

#include <QTextBrowser>

class ManualView : public QTextBrowser {
    Q_OBJECT
public:
    /// On paper it is light whatever the look, and its pictures are no wider than the paper.
    enum class Ground { screen, paper };
    explicit ManualView(Ground ground = Ground::screen, QWidget* parent = nullptr);

    enum class Direction { forward, backward };
    /// Selects where the words come next, beginning anew at the other end of the page; false when they are nowhere on it.
    bool findWords(const QString& words, Direction direction);
    /// The same from where the selection begins, for words that are still being typed.
    bool findWordsHere(const QString& words);

    /// Of the style sheet of the pages, what counts in the shade: the rules outside of "@media" and, in the dark, those inside as well.
    static QString styleFor(const QString& styleSheet, bool dark);

Q_SIGNALS:
    /// A link that leads out of the manual.
    void leftTheManual(const QUrl& address);

protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Lines no longer than the eye likes, whatever the width of the window.
    void setMargins();
    /// The page is new: another, or the same in another shade.
    void dressPage(const QUrl& address);
    void reloadInShade();

    bool isDark() const;
    QVariant picture(const QVariant& file) const;

    Ground m_ground;
    int m_marginsFor = -1;
};
