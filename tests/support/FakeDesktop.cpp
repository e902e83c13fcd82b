#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <algorithm>

int FakeAlerts::ask(const Alert& alert)
{
    m_asked.push_back(alert);
    if (meanwhile)
        meanwhile();
    if (m_answers.empty()) {
        ADD_FAILURE() << "An alert without a prepared answer: \"" << alert.title.toStdString() << "\": \"" << alert.text.toStdString()
                      << "\" [" << alert.buttons.join(" | ").toStdString() << "]";
        return cancelled;
    }
    const Answer next = m_answers.front();
    m_answers.pop_front();
    if (next.title.isEmpty())
        return next.button;
    const int button = static_cast<int>(alert.buttons.indexOf(next.title));
    if (button < 0)
        ADD_FAILURE() << "The alert \"" << alert.text.toStdString() << "\" has no button \"" << next.title.toStdString() << "\"";
    return button;
}

QStringList FakeAlerts::texts() const
{
    QStringList texts;
    for (const Alert& alert : m_asked)
        texts += alert.text;
    return texts;
}

std::optional<QString> FakeFilePanels::nextAnswer(const QString& title)
{
    if (m_answers.empty()) {
        ADD_FAILURE() << "A file panel without a prepared answer: \"" << title.toStdString() << "\"";
        return std::nullopt;
    }
    const std::optional<QString> next = m_answers.front();
    m_answers.pop_front();
    return next;
}

std::optional<QString> FakeFilePanels::openFile(const QString& title)
{
    openTitles += title;
    return nextAnswer(title);
}

std::optional<QString> FakeFilePanels::saveFile(const SavePanel& panel)
{
    savePanels.push_back(panel);
    return nextAnswer(panel.title);
}

void FakeScheduler::after(int milliseconds, std::function<void()> work)
{
    m_works.push_back({m_now + milliseconds, std::move(work)});
}

void FakeScheduler::pass(int milliseconds)
{
    const qint64 end = m_now + milliseconds;
    for (;;) {
        const auto next = std::min_element(m_works.begin(), m_works.end(), [](const Work& a, const Work& b) { return a.due < b.due; });
        if (next == m_works.end() || next->due > end)
            break;
        m_now = next->due;
        const std::function<void()> run = std::move(next->run);
        m_works.erase(next);
        run();
    }
    m_now = end;
}
