// The four steps to a game file, at the foot of the first page.

#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <limits>

void MainForm::ShowStartTips() {
    if (HelpMgmt::TipsClicks == 0) {
        static const char* const lines[] = {
            "To quickly create a new .game file:",
            "1) Select the name of the game and the folder where you've saved all the card "
            "images (this page)",
            "2) Specify how many players will partecipate and give each player a name",
            "3) Specify how many decks will be used",
            "4) For each deck specify what images will be used",
        };
        QString text = QString::fromLatin1(lines[0]);
        for (int i = 1; i < 5; ++i)
            text += QStringLiteral("\r\n") + QString::fromLatin1(lines[i]);
        mainHelp->setCaption(text);
    }
    // The count stops at its highest value rather than wrap to a negative one.
    if (HelpMgmt::TipsClicks < std::numeric_limits<qint16>::max())
        ++HelpMgmt::TipsClicks;
}
