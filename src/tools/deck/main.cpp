// zavik-deck: one deck of a game as a spreadsheet.
//   zavik-deck export GAME.game SECTION [FILE.csv]
//   zavik-deck import GAME.game SECTION FILE.csv [--apply] [--remove-missing] [--json]
// Exit status: 0 done, 1 some rows or cells refused (the others still apply
// with --apply), 2 a file that cannot be read or written, a CSV refused whole,
// or a wrong command line.

#include "game/GameFile.h"
#include "sheet/Csv.h"
#include "sheet/DeckContent.h"
#include "sheet/Import.h"
#include "store/ProfileStore.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringList>

#include <clocale>
#include <cstdio>

namespace {

const char kUsage[] =
    "usage: zavik-deck export GAME.game SECTION [FILE.csv]\n"
    "       zavik-deck import GAME.game SECTION FILE.csv [--apply] [--remove-missing] [--json]\n"
    "SECTION is a deck section as the game file names it: \"COMMON 1\", \"DECK 2 PLAYER 1\".\n"
    "Import shows what would change; --apply writes it into the game file.";

void write(FILE* stream, const QByteArray& bytes) {
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

int fail(int status, const QString& message) {
    write(stderr, (QStringLiteral("zavik-deck: ") + message + QLatin1Char('\n')).toUtf8());
    return status;
}

int usage(const QString& problem) {
    fail(2, problem);
    write(stderr, QByteArray(kUsage) + '\n');
    return 2;
}

struct Args {
    QString command, game, section, file;
    bool apply = false, removeMissing = false, json = false;
};

int exportDeck(const Args& args) {
    const sheet::DeckContent deck = sheet::readDeck(args.game, args.section);
    const QByteArray csv = sheet::exportCsv(deck, sheet::propertyColumns(args.game));
    if (args.file.isEmpty()) {
        write(stdout, csv);
        return 0;
    }
    QSaveFile out(args.file);
    if (!out.open(QIODevice::WriteOnly) || out.write(csv) != csv.size() || !out.commit())
        return fail(2, args.file + QStringLiteral(": cannot be written: ") + out.errorString());
    return 0;
}

int importDeck(const Args& args) {
    QFile file(args.file);
    if (!QFileInfo(args.file).isFile() || !file.open(QIODevice::ReadOnly))
        return fail(2, args.file + QStringLiteral(": cannot be read: ") +
                           (file.errorString().isEmpty() ? QStringLiteral("not a file")
                                                         : file.errorString()));
    // One byte past the limit is enough to refuse a file that is too large.
    const QByteArray bytes = file.read(sheet::MaxCsvBytes + 1);
    const sheet::CsvRead csv = sheet::readCsv(bytes);
    const sheet::DeckContent deck = sheet::readDeck(args.game, args.section);
    const sheet::ImportPlan plan =
        sheet::planImport(deck, sheet::propertyColumns(args.game), csv,
                          sheet::folderImages(sheet::imageDirOf(args.game)), args.removeMissing);
    if (!plan.error.isEmpty()) {
        if (args.json)
            write(stdout, sheet::previewJson(plan));
        return fail(2, args.file + QStringLiteral(": refused: ") + plan.error);
    }
    write(stdout, args.json ? sheet::previewJson(plan) : sheet::previewText(plan).toUtf8());
    const int status = plan.refused.empty() ? 0 : 1;
    if (!args.apply || plan.added() + plan.changed() + plan.removed() == 0)
        return status; // an unchanged deck keeps the options its file holds
    QString reason;
    store::SetProfileWriteErrorHandler(
        [&reason](const QString&, const QString& why) { reason = why; });
    if (!sheet::writeDeck(args.game, args.section, sheet::applyImport(deck, plan)))
        return fail(2, args.game + QStringLiteral(": cannot be written") +
                           (reason.isEmpty() ? QString() : QStringLiteral(": ") + reason));
    return status;
}

} // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    Args args;
    QStringList positional;
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (arg == QLatin1String("--help") || arg == QLatin1String("-h")) {
            write(stdout, QByteArray(kUsage) + '\n');
            return 0;
        }
        if (arg == QLatin1String("--apply"))
            args.apply = true;
        else if (arg == QLatin1String("--remove-missing"))
            args.removeMissing = true;
        else if (arg == QLatin1String("--json"))
            args.json = true;
        else if (arg.startsWith(QLatin1String("--")))
            return usage(QStringLiteral("unknown option ") + arg);
        else
            positional.append(arg);
    }
    if (positional.isEmpty())
        return usage(QStringLiteral("no command given"));
    args.command = positional.takeFirst();
    const bool isImport = args.command == QLatin1String("import");
    if (!isImport && args.command != QLatin1String("export"))
        return usage(QStringLiteral("unknown command ") + args.command);
    if (positional.size() < (isImport ? 3 : 2) || positional.size() > 3)
        return usage(QStringLiteral("wrong number of arguments for ") + args.command);
    if (!isImport && (args.apply || args.removeMissing || args.json))
        return usage(QStringLiteral("--apply, --remove-missing and --json belong to import"));
    args.game = positional[0];
    args.section = positional[1];
    args.file = positional.value(2);
    game::section::DeckName deck;
    if (!game::section::parseDeck(args.section, deck))
        return usage(QStringLiteral("\"") + args.section +
                     QStringLiteral("\" is no deck section; one is \"COMMON 1\" or "
                                    "\"DECK 2 PLAYER 1\""));
    if (!QFileInfo(args.game).isFile())
        return fail(2, args.game + QStringLiteral(": cannot be read: no such game file"));
    // The store reads an unreadable file as an empty one; a deck sheet of it would lie.
    if (QFile probe(args.game); !probe.open(QIODevice::ReadOnly))
        return fail(2, args.game + QStringLiteral(": cannot be read: ") + probe.errorString());
    return isImport ? importDeck(args) : exportDeck(args);
}
