#include "tools/scenario/Watchdog.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace scenario {

Watchdog::Watchdog(int limitMs, int graceMs)
    : m_limitMs(limitMs), m_graceMs(graceMs), m_thread([this] { watch(); }) {}

Watchdog::~Watchdog() {
    {
        std::lock_guard lock(m_mutex);
        m_quit = true;
    }
    m_wake.notify_all();
    m_thread.join();
}

void Watchdog::arm(const QString& file, int passed, int failedIfCut) {
    {
        std::lock_guard lock(m_mutex);
        m_armed = true;
        ++m_generation;
        m_file = file;
        m_passed = passed;
        m_failedIfCut = failedIfCut;
    }
    m_wake.notify_all();
}

void Watchdog::disarm() {
    {
        std::lock_guard lock(m_mutex);
        m_armed = false;
        ++m_generation;
    }
    m_wake.notify_all();
}

void Watchdog::watch() {
    std::unique_lock lock(m_mutex);
    while (!m_quit) {
        if (!m_armed) {
            m_wake.wait(lock);
            continue;
        }
        const unsigned generation = m_generation;
        const auto deadline =
            std::chrono::steady_clock::now() + std::chrono::milliseconds(m_limitMs + m_graceMs);
        const bool woken =
            m_wake.wait_until(lock, deadline, [&] { return m_quit || m_generation != generation; });
        if (woken)
            continue;
        std::printf(
            "%s: the file ran longer than %d s: a line never came back\n%d passed, %d failed\n",
            m_file.toLocal8Bit().constData(), m_limitMs / 1000, m_passed, m_failedIfCut);
        std::fflush(stdout);
        std::_Exit(1);
    }
}

} // namespace scenario
