// The running program itself, on the offscreen platform: bench_program MEASURE, with the business's home in $HOME.
//
//     paint        from start to the first paint of the main window
//     memory       after opening, with every list searched once
//     pickers COUNT the time from asking for the item picker until it is painted, over twenty items and over all of them
//     saves COUNT  the longest time the window does not answer while a changed order is saved, and what it worked in that time
//
// Prints one figure a line, its name before it.
#include "FirstPaint.h"

#include "ui/Program.h"
#include "ui/kit/FocusRing.h"
#include "ui/kit/Theme.h"
#include "ui/shell/MainWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

/// Kilobytes of memory of the process's own, files not counted.
long ownMemory()
{
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("RssAnon:"))
            return line.mid(8).trimmed().split(' ').front().toLong();
    }
    return 0;
}

/// Milliseconds that this thread has worked.
double ownTime()
{
    timespec now {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

void measureMemory(Program& program)
{
    Vendaro& vendaro = program.vendaro();
    vendaro.getOrderManager().listForm.search.edit("qu");
    vendaro.getContactManager().listForm.search.edit("qu");
    vendaro.getItemManager().listForm.search.edit("qu");
    QApplication::processEvents();
    std::printf("memory %ld\n", ownMemory());
    std::fflush(stdout);
    std::_Exit(0);
}

/// Opens the item picker over the records, waits until it is painted and leaves it; answers milliseconds of work.
double openPicker(Vendaro& vendaro, const std::vector<dataObject*>& items)
{
    qvPicker& picker = vendaro.getPicker();
    const double before = ownTime();
    picker.beginfor([](dataObject&) {}, items, {"code", "item", "variation"}, {80, 320, 100}, {"Code", "Item", "Variation"}, "Item");
    QApplication::processEvents();
    const double worked = ownTime() - before;
    picker.cancel();
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return worked;
}

/// By turns, since the first ones warm up what both need.
void measurePickers(Program& program, int count)
{
    const ItemManager& items = program.vendaro().getItemManager();
    std::vector<dataObject*> all;
    for (int n = 0; n < items.getCount(); ++n)
        all.push_back(items.getnthSortedItem(n));
    const std::vector<dataObject*> few(all.begin(), all.begin() + 20);
    for (int i = 0; i < count; ++i) {
        std::printf("picker-few %.3f\n", openPicker(program.vendaro(), few));
        std::printf("picker-all %.3f\n", openPicker(program.vendaro(), all));
    }
    std::fflush(stdout);
    std::_Exit(0);
}

/// Changes one order after the other through its editor, and notes the longest time between two rounds of the event loop until all is
/// on disk and shown.
class Saves : public QObject {
public:
    Saves(Program& program, int count) : m_program(program), m_left(count)
    {
        connect(&m_rounds, &QTimer::timeout, this, &Saves::round);
        connect(&program.vendaro().session(), &DatabaseSession::savedStateChanged, this, [this] { ++m_written; });
        m_rounds.start(0);
        m_sinceRound.start();
        m_sinceSave.start();
    }

private:
    static constexpr int writesOfSave = 2;
    static constexpr qint64 quiet = 200'000'000;

    void round()
    {
        m_longest = std::max(m_longest, m_sinceRound.nsecsElapsed());
        m_mostWork = std::max(m_mostWork, ownTime() - m_workAtRound);
        if (m_saving && m_written < writesOfSave)
            m_sinceSave.start();
        else if (m_sinceSave.nsecsElapsed() > quiet)
            next();
        startRound();
    }
    void startRound()
    {
        m_sinceRound.start();
        m_workAtRound = ownTime();
    }
    void next()
    {
        if (m_saving)
            std::printf("block %.3f\nblock-cpu %.3f\n", static_cast<double>(m_longest) / 1e6, m_mostWork);
        m_saving = true;
        if (m_left-- == 0) {
            std::fflush(stdout);
            std::_Exit(0);
        }
        OrderManager& orders = m_program.vendaro().getOrderManager();
        orders.editThisOrder(orders.at((m_left * 7919) % orders.getCount()));
        QTimer::singleShot(300, this, [this] { save(); });
        m_sinceSave.start();
        m_written = -1;
    }
    /// What happened before the command is not of the save; the round before this one is still to end.
    void save()
    {
        OrderManager& orders = m_program.vendaro().getOrderManager();
        orders.form.description.edit(orders.form.description.text() + '.');
        m_written = 0;
        m_longest = 0;
        m_mostWork = 0;
        startRound();
        orders.form.save.run();
    }

    Program& m_program;
    int m_left;
    int m_written = 0;
    qint64 m_longest = 0;
    /// In milliseconds of this thread's processor time.
    double m_mostWork = 0;
    double m_workAtRound = 0;
    bool m_saving = false;
    QTimer m_rounds;
    QElapsedTimer m_sinceRound;
    QElapsedTimer m_sinceSave;
};

} // namespace

int main(int argc, char** argv)
{
    const std::string measure = argc > 1 ? argv[1] : "";
    Theme::prepare();
    QApplication application(argc, argv);
    QApplication::setApplicationName("Vendaro");
    QApplication::setQuitOnLastWindowClosed(false);
    Theme::apply(application, Theme::Mode::light);
    FocusRing::install(application);
    FirstPaint paint(measure == "paint" ? FirstPaint::Then::exit : FirstPaint::Then::goOn);
    Program program;
    std::unique_ptr<Saves> saves;
    QTimer::singleShot(0, &program, [&] {
        program.start();
        if (measure == "memory")
            QTimer::singleShot(500, &program, [&] { measureMemory(program); });
        if (measure == "pickers")
            QTimer::singleShot(500, &program, [&] { measurePickers(program, std::atoi(argv[2])); });
        if (measure == "saves")
            saves = std::make_unique<Saves>(program, std::atoi(argv[2]));
    });
    return QApplication::exec();
}
