// Save: what is missing goes to the Check Phase form, then the game is saved
// unless it has no name.

#include "wizard/CheckForm.h"
#include "game/GameFile.h"
#include "wizard/GamePath.h"
#include "game/Conversions.h"
#include "wizard/Catalogue.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;
using conv::Val;
using conv::CInt;

CheckForm::CheckForm() : rt::Form(wizard::checkFormSpec()) {
    Text1 = get<rt::TextBox>(QStringLiteral("Text1"));
}

void CheckForm::Form_KeyPress(int& KeyAscii) {
    (void)KeyAscii;
    Unload();
}

void MainForm::CheckAndSave() {
    showStatus(QString());
    const QString head = QStringLiteral("** Missing or incorrect information **\r\n");
    QString report = head;
    auto finding = [&report](const QString& text) { report += QStringLiteral("\r\n") + text; };

    if (NameTXT->Text().isEmpty())
        finding(QStringLiteral("- Missing game name"));
    if (DirName->Text().isEmpty())
        finding(QStringLiteral("- Missing directory name"));
    if (Val(PlNum->Text()) == 0)
        finding(QStringLiteral("- No players specified"));
    const int players = CInt(Val(PlNum->Text()));
    for (int i = 1; i <= players && i <= 6; ++i)
        if (PLname[i - 1]->Text().isEmpty())
            finding(QStringLiteral("- No Name specified for player #") + QString::number(i));
    if (CurrentFrame == game::page::DecksDetail) {
        QString deck;
        if (IsCommonDeck) {
            deck = QStringLiteral(" common deck #") + QString::number(CurrentIndex);
        } else {
            const QString player = CurrentIndex >= 1 && CurrentIndex <= 6
                                       ? PLname[CurrentIndex - 1]->Text()
                                       : QString();
            deck = QStringLiteral(" deck #") + QString::number(CurrentPlayerDeck) +
                   QStringLiteral(" player: ") + player;
        }
        if (backImg->List(0).isEmpty())
            finding(QStringLiteral("- No back image specified for ") + deck);
        if (discardImg->List(0).isEmpty())
            finding(QStringLiteral("- No discard image specified for ") + deck);
    }

    if (report != head) {
        auto* check = rt::Load<CheckForm>();
        check->Text1->setText(report);
        check->Show(1);
    }
    if (!NameTXT->Text().isEmpty())
        SaveGameData(GameFilePath());
}
