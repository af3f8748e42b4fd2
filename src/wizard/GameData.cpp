// The game's general data and the players' names, between the controls of
// MainForm and the game file.

#include "wizard/GamePath.h"
#include "game/GameFile.h"
#include "store/ProfileStore.h"
#include "game/Conversions.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;
using store::ReadProfileValue;
using store::WriteProfileValue;
using conv::Val;
using conv::CInt;

namespace {

const QString Game = game::section::game();

// The game file knows at most six players; a larger count from a file stops there.
int playerRows(const QString& count) {
    return std::min<int>(CInt(Val(count)), 6);
}

} // namespace

void MainForm::SaveGameData(const QString& file) {
    const store::WriteBatch oneReplace;
    WriteProfileValue(Game, QStringLiteral("name"), NameTXT->Text(), file);
    WriteProfileValue(Game, QStringLiteral("description"), descTxt->Text(), file);
    WriteProfileValue(Game, QStringLiteral("players"), PlNum->Text(), file);
    WriteProfileValue(Game, QStringLiteral("directory"), DirName->Text(), file);
    WriteProfileValue(Game, QStringLiteral("common_decks"),
                      QString::number(CInt(Val(CommDecksNum->Text()))), file);
    const int players = playerRows(PlNum->Text());
    for (int i = 1; i <= players; ++i)
        WriteProfileValue(game::section::player(i), QStringLiteral("name"),
                          PLname[i - 1]->Text(), file);
    if (CurrentFrame == game::page::DecksDetail) {
        if (IsCommonDeck)
            SaveDeckData(true, CurrentIndex, file);
        else
            SaveDeckData(false, CurrentPlayerDeck, file);
    }
    if (CurrentFrame == game::page::Properties)
        SaveProperties(file);
    WriteProfileValue(Game, QStringLiteral("desktop"), DeskTopImage->Caption(), file);
}

void MainForm::LoadGameData() {
    descTxt->setText(ReadProfileValue(Game, QStringLiteral("description"), GameFilePath()));
    DirName->setText(ReadProfileValue(Game, QStringLiteral("directory"), GameFilePath()));
    PlNum->setText(ReadProfileValue(Game, QStringLiteral("players"), GameFilePath()));
    const int players = playerRows(PlNum->Text());
    for (int i = 1; i <= players; ++i)
        PLname[i - 1]->setText(ReadProfileValue(game::section::player(i),
                                                QStringLiteral("name"), GameFilePath()));
    CommDecksNum->setText(ReadProfileValue(Game, QStringLiteral("common_decks"), GameFilePath()));
    DeskTopImage->setCaption(ReadProfileValue(Game, QStringLiteral("desktop"), GameFilePath()));
    UpdatePlayerList();
}

void MainForm::LoadGameDialog() {
    dialog1->setFilter(QStringLiteral("Game Files|*.game"));
    dialog1->ShowOpen();
    const QString title = dialog1->FileTitle();
    if (title.isEmpty())
        return;
    // The name runs to the first dot; a name without one is the game's name whole.
    const qsizetype dot = title.indexOf(QLatin1Char('.'));
    NameTXT->setText(dot < 0 ? title : title.left(dot));
    LoadGameData();
}
