// A jump to a page, player, deck or report, the way the index takes the
// wizard there: the page left is not saved, and a deck comes from the file.

#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;

void MainForm::jumpTo(int frame, int index1, int index2) {
    CurrentFrame = frame;
    const QString n1 = QString::number(index1);
    const QString n2 = QString::number(index2);
    switch (CurrentFrame) {
    case 2:
        CurrentIndex = static_cast<qint16>(index2);
        break;
    case 4:
        if (index1 == -1) {
            IsCommonDeck = True;
            CurrentIndex = static_cast<qint16>(index2);
            LoadDeckData(QStringLiteral("COMMON ") + n2);
        } else {
            IsCommonDeck = False;
            CurrentPlayerDeck = static_cast<qint16>(index2);
            CurrentIndex = static_cast<qint16>(index1);
            LoadDeckData(QStringLiteral("DECK ") + n2 + QStringLiteral(" PLAYER ") + n1);
        }
        break;
    case 7:
        CurrentIndex = static_cast<qint16>(index1);
        break;
    default:
        break;
    }
    ShowFrame();
}
