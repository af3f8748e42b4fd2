#include "tools/deck/DealCommands.h"

#include "deal/Deal.h"
#include "deal/Odds.h"
#include "game/GameFile.h"
#include "sheet/DeckContent.h"
#include "store/ProfileStore.h"

#include <QRegularExpression>

#include <cstdio>

namespace deckcli {

namespace {

void print(FILE* stream, const QByteArray& bytes) {
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

int refuse(const QString& message) {
    print(stderr, (QStringLiteral("zavik-deck: ") + message + QLatin1Char('\n')).toUtf8());
    return 2;
}

// A whole number on the command line, or the default the file gives; a text
// that is no whole number is a mistake there, not a value to read around.
bool wholeNumber(const DealArgs& args, const char* option, QString& out) {
    const QString key = QLatin1String(option);
    if (!args.options.contains(key))
        return true;
    out = args.options.value(key).trimmed();
    static const QRegularExpression number(QStringLiteral("^-?[0-9]{1,9}$"));
    return number.match(out).hasMatch();
}

QString badNumber(const char* option, const DealArgs& args) {
    return QStringLiteral("%1 wants a whole number, not \"%2\"")
        .arg(QLatin1String(option), args.options.value(QLatin1String(option)));
}

} // namespace

bool takesValue(const QString& option) {
    return option == QLatin1String("--hand") || option == QLatin1String("--hands") ||
           option == QLatin1String("--at-least") || option == QLatin1String("--seed");
}

bool dealOption(const QString& option) {
    return takesValue(option) || option == QLatin1String("--json");
}

int oddsCommand(const DealArgs& args) {
    if (args.options.contains(QStringLiteral("--hands")) ||
        args.options.contains(QStringLiteral("--seed")))
        return refuse(QStringLiteral("--hands and --seed belong to deal"));
    const sheet::DeckContent deck = sheet::readDeck(args.game, args.section);
    QString hand = deck.deal, atLeast;
    if (!wholeNumber(args, "--hand", hand))
        return refuse(badNumber("--hand", args));
    if (!wholeNumber(args, "--at-least", atLeast))
        return refuse(badNumber("--at-least", args));
    const deal::Pile pile = deal::pileOf(deck);
    QStringList notes;
    const int size = deal::readHandSize(hand, notes);
    const qint64 k = deal::readAtLeast(atLeast, notes);
    deal::OddsTable table = deal::oddsTable(pile, sheet::propertyColumns(args.game), size, k);
    table.notes = notes + table.notes;
    print(stdout, args.options.contains(QStringLiteral("--json"))
                      ? deal::oddsJson(table, args.section)
                      : deal::oddsText(table).toUtf8());
    return 0;
}

int dealCommand(const DealArgs& args) {
    if (args.options.contains(QStringLiteral("--at-least")) ||
        args.options.contains(QStringLiteral("--json")))
        return refuse(QStringLiteral("--at-least and --json belong to odds"));
    const sheet::DeckContent deck = sheet::readDeck(args.game, args.section);
    QString hand = deck.deal;
    QString hands = store::ReadProfileValue(game::section::game(), game::key::players, args.game);
    if (!wholeNumber(args, "--hand", hand))
        return refuse(badNumber("--hand", args));
    if (!wholeNumber(args, "--hands", hands))
        return refuse(badNumber("--hands", args));
    QStringList notes;
    const int handCount = deal::readHands(hands, notes);
    const int size = deal::readHandSize(hand, notes);
    const QString seedText = args.options.value(QStringLiteral("--seed"));
    deal::Seed seed{deal::freshSeed(), {}};
    if (!seedText.trimmed().isEmpty())
        seed = deal::readSeed(seedText);
    if (!seed.note.isEmpty())
        notes.append(seed.note);
    const deal::Pile pile = deal::pileOf(deck);
    const deal::Deal dealt(pile, handCount, size, seed.value);
    QString text = deal::dealText(pile, dealt);
    for (const QString& note : notes)
        text += QStringLiteral("note: ") + note + QLatin1Char('\n');
    print(stdout, text.toUtf8());
    return 0;
}

} // namespace deckcli
