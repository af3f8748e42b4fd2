// Players Detail page: how many decks of their own the current player has.
// Unlike every other number of the game, it goes to the file at once.

#include "decks/DeckButtons.h"
#include "game/GameFile.h"
#include "wizard/GamePath.h"
#include "store/ProfileStore.h"
#include "game/Conversions.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;
using store::ReadProfileValue;
using store::WriteProfileValue;
using conv::Trim;

void MainForm::LoadPlayerData() {
    const QString name =
        CurrentIndex >= 1 && CurrentIndex <= 6 ? PLname[CurrentIndex - 1]->Text() : QString();
    Wiz[game::page::PlayersDetail]->setCaption(QStringLiteral("Data Player #") +
                                               QString::number(CurrentIndex) + QLatin1Char(' ') +
                                               name);
    // Runs NumPLdecks_Change only when the text differs, so that two players
    // with the same count keep the buttons and write nothing.
    NumPLdecks->setText(
        Trim(ReadProfileValue(game::section::player(CurrentIndex),
                              QLatin1String(game::key::decks), GameFilePath())));
}

void MainForm::NumPLdecks_Change() {
    if (!decks::followDeckCount(NumPLdecks->Text(), ShowPlayerDeck))
        return;
    WriteProfileValue(game::section::player(CurrentIndex), QLatin1String(game::key::decks),
                      NumPLdecks->Text(), GameFilePath());
    UpdatePlayerList();
}

void MainForm::ShowPlayerDeck_Click(int Index) {
    CurrentFrame = game::page::DecksDetail;
    CurrentPlayerDeck = static_cast<qint16>(Index + 1);
    IsCommonDeck = False;
    LoadDeckData(game::section::playerDeck(Index + 1, CurrentIndex));
    ShowFrame();
}

void MainForm::MrkUseOption_Click() {
    ShowMarkersBtn->setVisible(MrkUseOption->Value() != 0);
}
