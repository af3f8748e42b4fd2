#pragma once
// The game file's vocabulary: the pages of the wizard, the section and key
// names, and where a game's file lies. The wizard and the check both speak it,
// so a name is spelled here once.

#include <QString>

namespace game {

// The pages of MainForm by their index in the frame array Wiz. CurrentFrame
// holds one of them and stays a plain signed 32-bit number, as the state
// variables are; these names only say which page a number means.
namespace page {
inline constexpr qint32 None = -1;
inline constexpr qint32 GeneralInfo = 0;
inline constexpr qint32 PlayersInfo = 1;
inline constexpr qint32 PlayersDetail = 2;
inline constexpr qint32 DecksInfo = 3;
inline constexpr qint32 DecksDetail = 4;
inline constexpr qint32 CardDetail = 5; // an empty frame that no path brings up
inline constexpr qint32 Properties = 6;
inline constexpr qint32 ReportDetail = 7;
inline constexpr qint32 Count = 8;
} // namespace page

// Whose deck a jump or a row of the index means, where a player's number
// from 1 would stand: the common decks.
inline constexpr qint16 CommonDecksOwner = -1;

// The limits the file's readers count to.
inline constexpr int MaxPlayers = 6;
inline constexpr int MaxCommonDecks = 6;
inline constexpr int MaxPlayerDecks = 6;
inline constexpr int MaxDeckRows = 200;
inline constexpr int MaxPropertyLists = 4;
inline constexpr int MaxReports = 8;

namespace section {
QString game();                           // GAME
QString player(int player);               // Player n, as a save writes it
QString common(int deck);                 // COMMON n
QString playerDeck(int deck, int player); // DECK m PLAYER n
// The section of the deck on the decks page: common deck `deck`, or deck
// `deck` of player `player`.
QString deck(bool common, int deck, int player);
QString propLists(); // PROP LISTS
QString reports();   // REPORTS

// What a deck section's name says, for readers that meet section names in a
// file: a common deck has player 0. Letter case and the blanks between the
// words are as the store matches them; false for any other name.
struct DeckName {
    bool common = false;
    int deck = 0;
    int player = 0;
};
bool parseDeck(const QString& name, DeckName& out);
} // namespace section

namespace key {
inline constexpr char name[] = "name";
inline constexpr char description[] = "description";
inline constexpr char players[] = "players";
inline constexpr char directory[] = "directory";
inline constexpr char commonDecks[] = "common_decks";
inline constexpr char desktop[] = "desktop";
inline constexpr char decks[] = "decks";
inline constexpr char decksize[] = "decksize";
inline constexpr char imgBack[] = "img_back";
inline constexpr char imgDiscard[] = "img_discard";
inline constexpr char deal[] = "deal";
inline constexpr char split[] = "split";
inline constexpr char drawFacedown[] = "draw_facedown";
inline constexpr char viewDiscard[] = "viewDiscard";
inline constexpr char resize[] = "resize";
inline constexpr char total[] = "total";
inline constexpr char numReports[] = "num_reports";
QString card(int n);   // cardN, from 1
QString list(int n);   // listN, from 1
QString report(int n); // reportN, from 1
} // namespace key

// The file of the game called `name` in the application folder `appPath`.
QString filePath(const QString& appPath, const QString& name);

} // namespace game
