// The Players Info page: how many players, their names, and a button to each
// player's page that tells how many decks the file gives that player.

#include "runtime/Runtime.h"
#include "game/GameFile.h"
#include "wizard/GamePath.h"
#include "store/ProfileStore.h"
#include "game/Conversions.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;
using store::ReadProfileValue;
using conv::Val;
using conv::CInt;

namespace {

// 0 passes so that the box can be emptied on the way to another number;
// no players at all is reported by the check before a save.
bool refused(const QString& text) {
    const double v = Val(text);
    return v < 0.0 || v > 6.0;
}

const QString RefusedMessage = QStringLiteral("Please select a number from 1 to 6");

QString deckCount(const QString& value) {
    if (value.isEmpty() || value == QLatin1String("0"))
        return QStringLiteral("NO decks");
    if (Val(value) == 1)
        return QStringLiteral("1 deck");
    return value + QStringLiteral(" decks");
}

} // namespace

void MainForm::PlNum_Change() {
    if (refused(PlNum->Text()))
        rt::MsgBox(RefusedMessage, 0);
    else
        UpdatePlayerList();
}

void MainForm::PlNum_Validate(bool& Cancel) {
    if (refused(PlNum->Text())) {
        rt::MsgBox(RefusedMessage, 0);
        Cancel = true;
    }
}

void MainForm::UpdatePlayerList() {
    // Six rows is all the page has, whatever count a file holds.
    const int n = std::min<int>(CInt(Val(PlNum->Text())), 6);
    for (int i = 1; i <= n; ++i) {
        PLlabel[i - 1]->setVisible(true);
        PLname[i - 1]->setVisible(true);
        const QString decks = ReadProfileValue(game::section::player(i),
                                               QLatin1String(game::key::decks), GameFilePath());
        PL_data[i - 1]->setCaption(QStringLiteral("Player # ") + QString::number(i) +
                                   QStringLiteral(" data (") + deckCount(decks) + QLatin1Char(')'));
        PL_data[i - 1]->setVisible(true);
    }
    const int m = std::max<int>(CInt(Val(PlNum->Text()) + 1), 1);
    for (int i = m; i <= 6; ++i) {
        PLlabel[i - 1]->setVisible(false);
        PLname[i - 1]->setVisible(false);
        PL_data[i - 1]->setVisible(false);
    }
}

void MainForm::PL_data_Click(int Index) {
    CurrentFrame = game::page::PlayersDetail;
    CurrentIndex = static_cast<qint16>(Index + 1);
    ShowFrame();
}
