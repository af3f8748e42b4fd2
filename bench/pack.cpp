// Packing and unpacking a game of 2,000 JPEG files of 100 KB, beside zip -0
// and unzip on the same files in the same run, and the memory each of ours
// takes (the peak resident size of a child process doing only that).

#include "pack/Pack.h"
#include "pack/Unpack.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <random>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Run {
    double seconds = 0;
    long maxRssKb = 0;
    bool ok = false;
};

// `work` in a child of its own, so that its peak memory is its alone.
Run inChild(const std::function<bool()>& work) {
    QElapsedTimer timer;
    timer.start();
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() ? 0 : 1);
    int status = 0;
    struct rusage usage {};
    ::wait4(child, &status, 0, &usage);
    return {timer.nsecsElapsed() / 1e9, usage.ru_maxrss,
            WIFEXITED(status) && WEXITSTATUS(status) == 0};
}

Run tool(const QString& program, const QStringList& args, const QString& dir) {
    QElapsedTimer timer;
    timer.start();
    QProcess p;
    p.setWorkingDirectory(dir);
    p.start(program, args);
    const bool ok = p.waitForFinished(-1) && p.exitCode() == 0;
    return {timer.nsecsElapsed() / 1e9, 0, ok};
}

void line(const char* what, const Run& ours, const Run& theirs) {
    const double share = theirs.seconds / ours.seconds * 100;
    std::printf("%-8s ours %.3f s, %ld MB peak (goal < 64 MB: %s); theirs %.3f s; "
                "speed %.0f%% of theirs (goal >= 80%%: %s)%s\n",
                what, ours.seconds, ours.maxRssKb / 1024,
                ours.maxRssKb < 64 * 1024 ? "met" : "MISSED", theirs.seconds, share,
                share >= 80 ? "met" : "MISSED", ours.ok && theirs.ok ? "" : "  [a run failed]");
}

} // namespace

int main() {
    const QString zip = QStandardPaths::findExecutable(QStringLiteral("zip"));
    const QString unzip = QStandardPaths::findExecutable(QStringLiteral("unzip"));
    if (zip.isEmpty() || unzip.isEmpty()) {
        std::printf("pack: skipped, zip and unzip are not installed (apt-get install zip unzip)\n");
        return 0;
    }
    QTemporaryDir work;
    const QString src = work.filePath(QStringLiteral("src"));
    QDir().mkpath(src + QStringLiteral("/bigcards"));
    {
        QFile game(src + QStringLiteral("/Big.game"));
        game.open(QIODevice::WriteOnly);
        game.write("[GAME]\r\nname=Big\r\ndirectory=bigcards\r\n");
    }
    std::mt19937 random(7);
    QByteArray bytes(100 * 1024, '\0');
    for (int i = 0; i < 2000; ++i) {
        for (char& b : bytes)
            b = static_cast<char>(random());
        bytes[0] = '\xFF', bytes[1] = '\xD8', bytes[2] = '\xFF';
        QFile f(src + QStringLiteral("/bigcards/c%1.jpg").arg(i, 4, 10, QLatin1Char('0')));
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
    }
    const QString ours = work.filePath(QStringLiteral("ours.zip"));
    const QString theirs = work.filePath(QStringLiteral("theirs.zip"));
    // Each side once before the measure, so both find the files in the cache.
    tool(zip,
         {QStringLiteral("-0"), QStringLiteral("-r"), QStringLiteral("-q"), theirs,
          QStringLiteral("Big.game"), QStringLiteral("bigcards")},
         src);
    QFile::remove(theirs);
    const Run pack = inChild([&] { return pack::packGame(src + "/Big.game", ours, true).ok; });
    const Run zipRun = tool(zip,
                            {QStringLiteral("-0"), QStringLiteral("-r"), QStringLiteral("-q"),
                             theirs, QStringLiteral("Big.game"), QStringLiteral("bigcards")},
                            src);
    line("pack", pack, zipRun);

    const QString a = work.filePath(QStringLiteral("a")), b = work.filePath(QStringLiteral("b"));
    QDir().mkpath(a);
    QDir().mkpath(b);
    const Run unpack = inChild(
        [&] { return pack::unpackArchive(ours, a, {}).status == pack::UnpackResult::Done; });
    const Run unzipRun = tool(unzip, {QStringLiteral("-q"), theirs, QStringLiteral("-d"), b}, src);
    line("unpack", unpack, unzipRun);
    return 0;
}
