// zavik-check: the whole-game check from the command line.
//   zavik-check [--json] GAME.game...
// Exit status: 0 with no errors, 1 with errors, 2 for a file that cannot be
// read or a usage error.

#include "check/GameChecker.h"
#include "check/ReportText.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

namespace {

void print(FILE* stream, const QString& text) {
    const QByteArray bytes = text.toLocal8Bit();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fputc('\n', stream);
}

int usage(const QString& problem) {
    if (!problem.isEmpty())
        print(stderr, QStringLiteral("zavik-check: ") + problem);
    print(stderr, QStringLiteral("usage: zavik-check [--json] GAME.game..."));
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    bool json = false;
    QStringList files;
    const QStringList args = app.arguments().mid(1);
    for (const QString& arg : args) {
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
        for (const check::Finding& f : r.findings)
            print(stdout, check::findingLine(r, f));
    }
    if (json) {
        const QByteArray doc = check::toJson(reports);
        std::fwrite(doc.constData(), 1, static_cast<std::size_t>(doc.size()), stdout);
    } else {
        print(stdout, check::summaryLine(reports));
    }
    if (unreadable)
        return 2;
    return errors ? 1 : 0;
}
