// The Index button: opens the Game Tree and takes the wizard where the user
// chose. The page left is not saved; a jump to a deck reloads page 4 from the file.

#include "guidance/TreeForm.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;

void MainForm::TreeBtn_Click() {
    rt::Load<TreeForm>()->Show(1);
    if (TreeFrame == -1)
        return;
    CurrentFrame = TreeFrame;
    const QString n1 = QString::number(TreeIndex1);
    const QString n2 = QString::number(TreeIndex2);
    switch (CurrentFrame) {
    case 2:
        CurrentIndex = static_cast<qint16>(TreeIndex2);
        break;
    case 4:
        if (TreeIndex1 == -1) {
            IsCommonDeck = True;
            CurrentIndex = static_cast<qint16>(TreeIndex2);
            LoadDeckData(QStringLiteral("COMMON ") + n2);
        } else {
            IsCommonDeck = False;
            CurrentPlayerDeck = static_cast<qint16>(TreeIndex2);
            CurrentIndex = static_cast<qint16>(TreeIndex1);
            LoadDeckData(QStringLiteral("DECK ") + n2 + QStringLiteral(" PLAYER ") + n1);
        }
        break;
    case 7:
        CurrentIndex = static_cast<qint16>(TreeIndex1);
        break;
    default:
        break;
    }
    ShowFrame();
}
