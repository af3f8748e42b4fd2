#pragma once
// Ends the run when one file's line never comes back: program code that hangs
// cannot be stopped from the same thread, so another thread reports and exits.

#include <QString>

#include <condition_variable>
#include <mutex>
#include <thread>

namespace scenario {

class Watchdog {
public:
    // Cuts a file off `graceMs` after its time limit `limitMs` has passed.
    Watchdog(int limitMs, int graceMs);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    // Starts the clock for one file. `passed` and `failedIfCut` make the last
    // line of the report should the file be cut off.
    void arm(const QString& file, int passed, int failedIfCut);
    void disarm();

private:
    void watch();

    const int m_limitMs;
    const int m_graceMs;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_armed = false;
    bool m_quit = false;
    unsigned m_generation = 0;
    QString m_file;
    int m_passed = 0;
    int m_failedIfCut = 0;
    std::thread m_thread;
};

} // namespace scenario
