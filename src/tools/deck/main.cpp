// zavik-deck: one deck of a game as a spreadsheet.
//   zavik-deck export GAME.game SECTION [FILE.csv]
//   zavik-deck import GAME.game SECTION FILE.csv [--apply] [--remove-missing] [--json]
//   zavik-deck odds GAME.game SECTION [--hand N] [--at-least K] [--json]
//   zavik-deck deal GAME.game SECTION [--seed S] [--hands H] [--hand N]
// Exit status: 0 done, 1 some rows or cells refused (the others still apply
// with --apply), 2 a file that cannot be read or written, a CSV refused whole,
// or a wrong command line.

#include "game/GameFile.h"
#include "sheet/Csv.h"
#include "sheet/DeckContent.h"
#include "sheet/Import.h"
#include "store/ProfileStore.h"
#include "tools/deck/DealCommands.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringList>

#include <algorithm>
#include <clocale>
#include <cstdio>

namespace {

const char kUsage[] =
    "usage: zavik-deck export GAME.game SECTION [FILE.csv]\n"
    "       zavik-deck import GAME.game SECTION FILE.csv [--apply] [--remove-missing] [--json]\n"
    "       zavik-deck odds GAME.game SECTION [--hand N] [--at-least K] [--json]\n"
    "       zavik-deck deal GAME.game SECTION [--seed S] [--hands H] [--hand N]\n"
    "SECTION is a deck section as the game file names it: \"COMMON 1\", \"DECK 2 PLAYER 1\".\n"
    "Import shows what would change; --apply writes it into the game file.\n"
    "Odds: the exact chance that one hand of N cards (the deck's \"deal\" by default) holds\n"
    "at least K (1) of each card, of each property value; with --json, full precision.\n"
    "Deal: the hands the deal window shows for seed S (a number, or any word by its hash;\n"
    "a new one when none is given), H hands (the game's players) of N cards.";

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
    deckcli::DealArgs dealArgs;
    QStringList positional;
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (arg == QLatin1String("--help") || arg == QLatin1String("-h")) {
            write(stdout, QByteArray(kUsage) + '\n');
            return 0;
        }
        if (deckcli::takesValue(arg)) {
            if (i + 1 >= argc)
                return usage(arg + QStringLiteral(" needs a value"));
            dealArgs.options.insert(arg, QString::fromLocal8Bit(argv[++i]));
            continue;
        }
        if (deckcli::dealOption(arg))
            dealArgs.options.insert(arg, QString());
        if (arg == QLatin1String("--apply"))
            args.apply = true;
        else if (arg == QLatin1String("--remove-missing"))
            args.removeMissing = true;
        else if (arg == QLatin1String("--json"))
            args.json = true;
        else if (arg.startsWith(QLatin1String("--")) && !deckcli::dealOption(arg))
            return usage(QStringLiteral("unknown option ") + arg);
        else
            positional.append(arg);
    }
    if (positional.isEmpty())
        return usage(QStringLiteral("no command given"));
    args.command = positional.takeFirst();
    const bool isImport = args.command == QLatin1String("import");
    const bool isDeal =
        args.command == QLatin1String("odds") || args.command == QLatin1String("deal");
    if (!isImport && !isDeal && args.command != QLatin1String("export"))
        return usage(QStringLiteral("unknown command ") + args.command);
    if (positional.size() < (isImport ? 3 : 2) || positional.size() > (isDeal ? 2 : 3))
        return usage(QStringLiteral("wrong number of arguments for ") + args.command);
    if (isDeal && (args.apply || args.removeMissing))
        return usage(QStringLiteral("--apply and --remove-missing belong to import"));
    if (!isImport && !isDeal && (args.apply || args.removeMissing || args.json))
        return usage(QStringLiteral("--apply, --remove-missing and --json belong to import"));
    const bool dealOnly = std::any_of(dealArgs.options.keyBegin(), dealArgs.options.keyEnd(),
                                      [](const QString& o) { return deckcli::takesValue(o); });
    if (!isDeal && dealOnly)
        return usage(
            QStringLiteral("--hand, --hands, --at-least and --seed belong to odds and deal"));
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
    if (isDeal) {
        dealArgs.game = args.game;
        dealArgs.section = args.section;
        const int status = args.command == QLatin1String("odds") ? deckcli::oddsCommand(dealArgs)
                                                                 : deckcli::dealCommand(dealArgs);
        if (status == 2)
            write(stderr, QByteArray(kUsage) + '\n');
        return status;
    }
    return isImport ? importDeck(args) : exportDeck(args);
}
