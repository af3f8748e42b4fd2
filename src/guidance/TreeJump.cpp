// The Index button: opens the Game Tree and takes the wizard where the user
// chose. The page left is not saved; a jump to a deck reloads page 4 from the file.

#include "game/GameFile.h"
#include "guidance/TreeForm.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;

void MainForm::TreeBtn_Click() {
    rt::Load<TreeForm>()->Show(1);
    if (TreeFrame == game::page::None)
        return;
    jumpTo(TreeFrame, TreeIndex1, TreeIndex2);
}
