// Which page is up: ShowFrame, and the Forward and Back buttons that walk the
// spine pages or move the cursor of a detail page.

#include "runtime/Runtime.h"
#include "wizard/GamePath.h"
#include "game/Conversions.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;
using conv::Val;

namespace {

QString num(qint64 n) {
    return QString::number(n);
}

QString commonSection(qint16 deck) {
    return QStringLiteral("COMMON ") + num(deck);
}

QString playerDeckSection(qint16 deck, qint16 player) {
    return QStringLiteral("DECK ") + num(deck) + QStringLiteral(" PLAYER ") + num(player);
}

} // namespace

void MainForm::ShowFrame() {
    HideHelp();
    if (PreviousFrame >= 0 && PreviousFrame < 8) // -1: no page to hide
        Wiz[PreviousFrame]->setVisible(false);
    if (CurrentFrame < 0 || CurrentFrame > 7)
        return;
    rt::Frame* page = Wiz[CurrentFrame];
    page->setWidth(ScaleWidth() - 16);
    page->setTop(8);
    page->setLeft(8);
    page->setVisible(true);
    page->ZOrder();

    switch (CurrentFrame) {
    case 4: {
        File1->setPath(rt::AppPath() + QLatin1Char('/') + DirName->Text());
        if (DirName->Text().isEmpty())
            rt::MsgBox(QStringLiteral("No directory has been set for the current game"), 64);
        if (IsCommonDeck) {
            Wiz[4]->setCaption(QStringLiteral("Common Deck #") + num(CurrentIndex));
        } else {
            const QString player = CurrentIndex >= 1 && CurrentIndex <= 6
                                       ? PLname[CurrentIndex - 1]->Text()
                                       : QString();
            Wiz[4]->setCaption(QStringLiteral("Deck #") + num(CurrentPlayerDeck) +
                               QStringLiteral(" Player # ") + num(CurrentIndex) +
                               QStringLiteral(" - ") + player);
        }
        break;
    }
    case 2:
        LoadPlayerData();
        break;
    case 6:
        showProperties();
        LoadReportCount();
        break;
    case 7:
        DisplayReport(CurrentIndex);
        break;
    default:
        break;
    }
}

void MainForm::NextStep_Click() {
    HideHelp();
    PreviousFrame = CurrentFrame;
    switch (CurrentFrame) {
    case 0:
        if (NameTXT->Text().isEmpty()) {
            rt::MsgBox(QStringLiteral("Please select the game name"), 0);
            return;
        }
        CurrentFrame = 1;
        break;
    case 1:
        CurrentFrame = 3;
        break;
    case 2:
        if (Val(PlNum->Text()) > CurrentIndex)
            CurrentIndex = static_cast<qint16>(CurrentIndex + 1);
        break;
    case 3:
        CurrentFrame = 6;
        break;
    case 4:
        if (IsCommonDeck) {
            if (Val(CommDecksNum->Text()) > CurrentIndex) {
                SaveDeckData(IsCommonDeck, CurrentIndex);
                CurrentIndex = static_cast<qint16>(CurrentIndex + 1);
                LoadDeckData(commonSection(CurrentIndex));
            }
        } else if (Val(NumPLdecks->Text()) > CurrentPlayerDeck) {
            SaveDeckData(IsCommonDeck, CurrentPlayerDeck);
            CurrentPlayerDeck = static_cast<qint16>(CurrentPlayerDeck + 1);
            LoadDeckData(playerDeckSection(CurrentPlayerDeck, CurrentIndex));
        }
        break;
    default:
        break;
    }
    ShowFrame();
}

void MainForm::PrevStep_Click() {
    HideHelp();
    PreviousFrame = CurrentFrame;
    switch (CurrentFrame) {
    case 1:
        CurrentFrame = 0;
        break;
    case 2:
        if (CurrentIndex > 1)
            CurrentIndex = static_cast<qint16>(CurrentIndex - 1);
        else
            CurrentFrame = 1;
        break;
    case 3:
        CurrentFrame = 1;
        break;
    case 4:
        if (IsCommonDeck) {
            if (CurrentIndex > 1) {
                SaveDeckData(IsCommonDeck, CurrentIndex);
                CurrentIndex = static_cast<qint16>(CurrentIndex - 1);
                LoadDeckData(commonSection(CurrentIndex));
            } else {
                CurrentFrame = 3;
            }
        } else if (CurrentPlayerDeck > 1) {
            SaveDeckData(IsCommonDeck, CurrentPlayerDeck);
            CurrentPlayerDeck = static_cast<qint16>(CurrentPlayerDeck - 1);
            LoadDeckData(playerDeckSection(CurrentPlayerDeck, CurrentIndex));
        } else {
            CurrentFrame = 2;
        }
        break;
    case 6:
        SaveProperties(GameFilePath());
        CurrentFrame = 3;
        break;
    case 7:
        if (CurrentIndex > 0)
            CurrentIndex = static_cast<qint16>(CurrentIndex - 1);
        else
            CurrentFrame = 6;
        break;
    default:
        break;
    }
    ShowFrame();
}
