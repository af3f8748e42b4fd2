#include "pack/GameImages.h"

#include "game/CardEntry.h"
#include "game/Conversions.h"
#include "game/GameFile.h"
#include "sheet/DeckContent.h"
#include "store/ProfileStore.h"

#include <QSet>

#include <algorithm>

namespace pack {
namespace {

int countOf(const QString& gameFile, const QString& section, const char* key, int most) {
    const QString text = store::ReadProfileValue(section, QString::fromLatin1(key), gameFile);
    return std::clamp<int>(conv::CInt(conv::Val(text)), 0, most);
}

struct Collector {
    GameImages& out;
    QSet<QString> seen;
    void add(const QString& raw) {
        const QString name = raw.trimmed();
        if (name.isEmpty() || seen.contains(foldedKey(name)))
            return;
        seen.insert(foldedKey(name));
        out.names.append(name);
    }
    static QString foldedKey(const QString& name) { return name.toCaseFolded(); }
};

void addDeck(Collector& images, const QString& gameFile, const QString& section) {
    const sheet::DeckContent deck = sheet::readDeck(gameFile, section);
    images.add(deck.back);
    images.add(deck.discard);
    for (const sheet::DeckRow& row : deck.rows)
        images.add(readCardEntry(row.entry).name);
}

} // namespace

GameImages namedImages(const QString& gameFile) {
    GameImages result;
    Collector images{result, {}};
    const QString gameSection = game::section::game();
    result.folder =
        store::ReadProfileValue(gameSection, QString::fromLatin1(game::key::directory), gameFile)
            .trimmed();
    images.add(
        store::ReadProfileValue(gameSection, QString::fromLatin1(game::key::desktop), gameFile));
    const int common = countOf(gameFile, gameSection, game::key::commonDecks, game::MaxCommonDecks);
    for (int deck = 1; deck <= common; ++deck)
        addDeck(images, gameFile, game::section::common(deck));
    const int players = countOf(gameFile, gameSection, game::key::players, game::MaxPlayers);
    for (int player = 1; player <= players; ++player) {
        const int decks = countOf(gameFile, game::section::player(player), game::key::decks,
                                  game::MaxPlayerDecks);
        for (int deck = 1; deck <= decks; ++deck)
            addDeck(images, gameFile, game::section::playerDeck(deck, player));
    }
    return result;
}

} // namespace pack
