// Decks Info page: how many common decks the game has, and a button to each.

#include "decks/DeckButtons.h"
#include "game/GameFile.h"
#include "runtime/Runtime.h"
#include "game/Conversions.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;
using conv::Val;

void MainForm::CommDecksNum_Change() {
    decks::followDeckCount(CommDecksNum->Text(), ShowCommonDeck);
}

void MainForm::CommDecksNum_Validate(bool& Cancel) {
    if (decks::deckCountRefused(Val(CommDecksNum->Text()))) {
        rt::MsgBox(decks::DeckCountRefused, 0);
        Cancel = true;
    }
}

void MainForm::ShowCommonDeck_Click(int Index) {
    CurrentFrame = game::page::DecksDetail;
    IsCommonDeck = True;
    CurrentIndex = static_cast<qint16>(Index + 1);
    LoadDeckData(game::section::common(Index + 1));
    ShowFrame();
}
