// F1 in any window asks for the page of the manual about what the person works in.
#pragma once

#include <QObject>

#include <functional>

class HelpKey : public QObject {
    Q_OBJECT
public:
    /// show: takes the topic, which is empty when nothing names one.
    explicit HelpKey(std::function<void(const QString& topic)> show);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void(const QString&)> m_show;
};
