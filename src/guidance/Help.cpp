// The help notes laid over the page.

#include "wizard/Globals.h"
#include "wizard/MainForm.h"

void MainForm::HideHelp() {
    if (!HelpMgmt::HelpVisible)
        return;
    HelpMgmt::HelpVisible = 0;
    for (int i = 0; i <= 4; ++i)
        if (rt::Control* box = control(QStringLiteral("helpLabel"), i))
            box->setVisible(false);
}

void MainForm::LoadHelpBoxes() {
    for (int i = 1; i <= 4; ++i)
        LoadElement(QStringLiteral("helpLabel"), i);
    HelpMgmt::TipsClicks = 0;
}
