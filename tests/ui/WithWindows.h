// The program with its windows, as it starts on the screen: made while it launches, when they hear all that the start tells.
#pragma once

#include "UiTest.h"
#include "ui/Windows.h"
#include "ui/shell/MainWindow.h"

#include <memory>

/// Home: the scenario it plays in.
template <class Home>
class WithWindows : public Home {
protected:
    void startWithWindows()
    {
        this->startListening([this](Vendaro& vendaro) {
            windows = std::make_unique<Windows>(vendaro);
            windows->main().show();
            windows->main().makeLists();
        });
        uitest::settle();
    }
    void TearDown() override
    {
        SheetStack::instance().cancelAll();
        windows.reset();
        this->quit();
    }
    /// The window of that kind that is seen; none when there is none.
    template <class Window>
    static Window* seen()
    {
        for (QWidget* candidate : QApplication::topLevelWidgets()) {
            if (auto* found = qobject_cast<Window*>(candidate); found && found->isVisible())
                return found;
        }
        return nullptr;
    }

    std::unique_ptr<Windows> windows;
};
