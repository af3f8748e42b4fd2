// zavik-check: the whole-game check from the command line.
//   zavik-check [--json] GAME.game...
// Exit status: 0 with no errors, 1 with errors, 2 for a file that cannot be
// read or a usage error.

#include "check/GameChecker.h"
#include "check/ReportText.h"

#include <QFileInfo>
#include <QStringBuilder>
#include <QStringList>

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#ifdef __linux__
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace {

void write(FILE* stream, const QByteArray& bytes) {
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

void print(FILE* stream, const QString& text) {
    write(stream, text.toLocal8Bit());
    std::fputc('\n', stream);
}

// The process ends here without freeing what it built: the reports of a large
// game are tens of thousands of small blocks, and freeing them one by one
// showed in the run time of every call.
[[noreturn]] void finish(int status) {
    std::fflush(stdout);
    std::fflush(stderr);
    std::_Exit(status);
}

int usage(const QString& problem) {
    if (!problem.isEmpty())
        print(stderr, QStringLiteral("zavik-check: ") + problem);
    print(stderr, QStringLiteral("usage: zavik-check [--json] GAME.game..."));
    return 2;
}

// A page of memory that a process touches first costs a fault, and faults are
// dear on virtual machines: a large game had more than a thousand of them, a
// third of the run time. The check needs about ten bytes of memory for each
// byte of the game files; asking the kernel for those pages in one call before
// the check, and keeping malloc from giving them back, costs a fraction.
void prepareHeap(const QStringList& files) {
#if defined(__linux__) && defined(MADV_POPULATE_WRITE)
    qint64 total = 0;
    for (const QString& file : files)
        total += QFileInfo(file).size();
    const std::size_t bytes = static_cast<std::size_t>(std::min<qint64>(total * 10, 64 << 20));
    if (bytes < (1 << 20))
        return;
    // All blocks from the one heap, so that what was prepared is used.
    mallopt(M_MMAP_THRESHOLD, 256 << 20);
    mallopt(M_TRIM_THRESHOLD, 512 << 20);
    void* block = std::malloc(bytes);
    if (!block)
        return;
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto start = reinterpret_cast<std::uintptr_t>(block);
    const std::uintptr_t begin = (start + page - 1) & ~(page - 1);
    const std::uintptr_t end = (start + bytes) & ~(page - 1);
    if (end > begin) // an older kernel refuses; the pages then come one by one
        ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_POPULATE_WRITE);
    std::free(block);
#else
    (void)files;
#endif
}

} // namespace

int main(int argc, char** argv) {
    // No QCoreApplication: nothing here needs one, and making it costs start-up
    // time. Its one effect the output can show, messages in the user's
    // language from the C library, comes from the locale, set here instead.
    std::setlocale(LC_ALL, "");
    bool json = false;
    QStringList files;
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args.append(QString::fromLocal8Bit(argv[i]));
    for (const QString& arg : std::as_const(args)) {
        if (arg == QLatin1String("--json"))
            json = true;
        else if (arg == QLatin1String("--help") || arg == QLatin1String("-h")) {
            print(stdout, QStringLiteral("usage: zavik-check [--json] GAME.game...\n"
                                         "Checks each game file and its image directory; exit "
                                         "status 0 with no errors, 1 with errors, 2 when a file "
                                         "cannot be read."));
            return 0;
        } else if (arg.startsWith(QLatin1String("--")))
            return usage(QStringLiteral("unknown option ") + arg);
        else
            files.append(arg);
    }
    if (files.isEmpty())
        return usage(QStringLiteral("no game file given"));
    prepareHeap(files);

    std::vector<check::GameReport> reports;
    bool unreadable = false;
    bool errors = false;
    for (const QString& file : std::as_const(files)) {
        reports.push_back(check::checkGame(file));
        const check::GameReport& r = reports.back();
        unreadable = unreadable || !r.unreadable.isEmpty();
        errors = errors || r.count(check::Severity::Error) > 0;
        if (json)
            continue;
        if (!r.unreadable.isEmpty())
            print(stderr, file + QStringLiteral(": cannot be read: ") + r.unreadable);
        // One conversion and one write for the whole file: a large game has
        // thousands of findings.
        QString lines;
        for (const check::Finding& f : r.findings)
            lines += check::findingLine(r, f) % QLatin1Char('\n');
        write(stdout, lines.toLocal8Bit());
    }
    if (json) {
        const QByteArray doc = check::toJson(reports);
        std::fwrite(doc.constData(), 1, static_cast<std::size_t>(doc.size()), stdout);
    } else {
        print(stdout, check::summaryLine(reports));
    }
    finish(unreadable ? 2 : errors ? 1 : 0);
}
