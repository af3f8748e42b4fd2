// A jump to a page, player, deck or report, the way the index takes the
// wizard there: the page left is not saved, and a deck comes from the file.

#include "game/GameFile.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;
namespace page = game::page;
namespace section = game::section;

void MainForm::jumpTo(qint32 targetPage, int index1, int index2) {
    CurrentFrame = targetPage;
    switch (CurrentFrame) {
    case page::PlayersDetail:
        CurrentIndex = static_cast<qint16>(index2);
        break;
    case page::DecksDetail:
        if (index1 == game::CommonDecksOwner) {
            IsCommonDeck = True;
            CurrentIndex = static_cast<qint16>(index2);
            LoadDeckData(section::common(index2));
        } else {
            IsCommonDeck = False;
            CurrentPlayerDeck = static_cast<qint16>(index2);
            CurrentIndex = static_cast<qint16>(index1);
            LoadDeckData(section::playerDeck(index2, index1));
        }
        break;
    case page::ReportDetail:
        CurrentIndex = static_cast<qint16>(index1);
        break;
    default:
        break;
    }
    ShowFrame();
}
