#include "ui/LongWorkCard.h"

#include "ui/kit/ProgressCard.h"
#include "ui/kit/SheetStack.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cmath>
#include <memory>

void LongWorkCard::run(const QString& title, const std::function<void(const GoesOn&)>& work)
{
    constexpr int wholeBar = 1000;
    constexpr int betweenLooks = 40;
    std::unique_ptr<ProgressCard> card;
    QElapsedTimer sinceStart;
    sinceStart.start();
    qint64 nextLook = m_patience;
    work([&](double share) {
        if (sinceStart.elapsed() < nextLook)
            return true;
        if (!card) {
            card = std::make_unique<ProgressCard>(SheetStack::frontWindow(), title);
            card->open();
        }
        card->setProgress(static_cast<int>(std::lround(share * wholeBar)), wholeBar);
        QCoreApplication::processEvents();
        nextLook = sinceStart.elapsed() + betweenLooks;
        return !card->wasCancelled();
    });
    if (card)
        card->accept();
}
