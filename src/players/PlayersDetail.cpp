// Players Detail page.

#include "wizard/MainForm.h"

// The player's page reads its data when it comes up; it arrives with the
// players' detail work.
void MainForm::LoadPlayerData() {}
