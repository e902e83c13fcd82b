// Programs that open the same folder at the same moment, again and again: lock_race ROUNDS PROGRAMS FOLDER
//
// In each round every program looks for the lock and takes it when there is none. Exactly one may have it then, and only that one writes.
#include "foundation/Log.h"
#include "storage/DatabaseLock.h"
#include "support/FakeDesktop.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Shared {
    pthread_barrier_t barrier;
    /// Of this round.
    std::atomic<int> holders;
    std::atomic<long> twoHolders;
    std::atomic<long> noHolder;
    std::atomic<long> twoWriters;
    std::atomic<long> notReleased;
};

Shared* shareBetween(int programs)
{
    void* memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        std::abort();
    auto* shared = new (memory) Shared {};
    pthread_barrierattr_t attributes;
    pthread_barrierattr_init(&attributes);
    pthread_barrierattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
    pthread_barrier_init(&shared->barrier, &attributes, static_cast<unsigned>(programs));
    return shared;
}

/// What only the holder may do: the file must not be there yet.
void writeAsHolder(Shared& shared, const QString& folder)
{
    const std::string path = folder.toStdString() + "/writing";
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0) {
        ++shared.twoWriters;
        return;
    }
    ::close(file);
    ::unlink(path.c_str());
}

void runRounds(Shared& shared, const QString& folder, long rounds, int program)
{
    FakeClock clock;
    FakeUser user;
    user.login = QString("user%1").arg(program);
    DatabaseLock lock {clock, user};
    lock.setFolder(folder);
    for (long round = 0; round < rounds; ++round) {
        pthread_barrier_wait(&shared.barrier);
        bool mine = false;
        if (!lock.exists()) {
            const Result<bool> acquired = lock.acquire();
            mine = acquired && acquired.value();
        }
        if (mine) {
            ++shared.holders;
            writeAsHolder(shared, folder);
        }
        if (pthread_barrier_wait(&shared.barrier) == PTHREAD_BARRIER_SERIAL_THREAD) {
            const int holders = shared.holders.exchange(0);
            shared.twoHolders += holders > 1;
            shared.noHolder += holders == 0;
        }
        pthread_barrier_wait(&shared.barrier);
        if (mine && !lock.release())
            ++shared.notReleased;
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    const long rounds = std::atol(argv[1]);
    const int programs = std::atoi(argv[2]);
    const QString folder = QString::fromLocal8Bit(argv[3]);
    setLogSink([](std::string_view) {});
    Shared& shared = *shareBetween(programs);
    for (int program = 0; program < programs; ++program) {
        if (fork() == 0) {
            runRounds(shared, folder, rounds, program);
            _exit(0);
        }
    }
    int status = 0;
    bool ended = true;
    while (wait(&status) > 0)
        ended = ended && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    std::printf("%ld rounds of %d programs: two holders in %ld, none in %ld, two writers in %ld, not released in %ld\n", rounds, programs,
        shared.twoHolders.load(), shared.noHolder.load(), shared.twoWriters.load(), shared.notReleased.load());
    return ended && shared.twoHolders + shared.noHolder + shared.twoWriters + shared.notReleased == 0 ? 0 : 1;
}
