// Which page is up: ShowFrame, and the Forward and Back buttons that walk the
// spine pages or move the cursor of a detail page.

#include "runtime/Runtime.h"
#include "wizard/GamePath.h"
#include "game/Conversions.h"
#include "game/GameFile.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;
using conv::Val;
namespace page = game::page;
namespace section = game::section;

namespace {

QString num(qint64 n) {
    return QString::number(n);
}

} // namespace

void MainForm::ShowFrame() {
    HideHelp();
    if (PreviousFrame >= 0 && PreviousFrame < page::Count) // page::None: no page to hide
        Wiz[PreviousFrame]->setVisible(false);
    if (CurrentFrame < 0 || CurrentFrame >= page::Count)
        return;
    rt::Frame* page = Wiz[CurrentFrame];
    page->setWidth(ScaleWidth() - 16);
    page->setTop(8);
    page->setLeft(8);
    page->setVisible(true);
    page->ZOrder();

    switch (CurrentFrame) {
    case page::DecksDetail: {
        File1->setPath(rt::AppPath() + QLatin1Char('/') + DirName->Text());
        if (DirName->Text().isEmpty())
            rt::MsgBox(QStringLiteral("No directory has been set for the current game"), 64);
        if (IsCommonDeck) {
            Wiz[page::DecksDetail]->setCaption(QStringLiteral("Common Deck #") + num(CurrentIndex));
        } else {
            const QString player = CurrentIndex >= 1 && CurrentIndex <= 6
                                       ? PLname[CurrentIndex - 1]->Text()
                                       : QString();
            Wiz[page::DecksDetail]->setCaption(QStringLiteral("Deck #") + num(CurrentPlayerDeck) +
                               QStringLiteral(" Player # ") + num(CurrentIndex) +
                               QStringLiteral(" - ") + player);
        }
        break;
    }
    case page::PlayersDetail:
        LoadPlayerData();
        break;
    case page::Properties:
        showProperties();
        LoadReportCount();
        break;
    case page::ReportDetail:
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
    case page::GeneralInfo:
        if (NameTXT->Text().isEmpty()) {
            rt::MsgBox(QStringLiteral("Please select the game name"), 0);
            return;
        }
        CurrentFrame = page::PlayersInfo;
        break;
    case page::PlayersInfo:
        CurrentFrame = page::DecksInfo;
        break;
    case page::PlayersDetail:
        if (Val(PlNum->Text()) > CurrentIndex)
            CurrentIndex = static_cast<qint16>(CurrentIndex + 1);
        break;
    case page::DecksInfo:
        CurrentFrame = page::Properties;
        break;
    case page::DecksDetail:
        if (IsCommonDeck) {
            if (Val(CommDecksNum->Text()) > CurrentIndex) {
                SaveDeckData(IsCommonDeck, CurrentIndex);
                CurrentIndex = static_cast<qint16>(CurrentIndex + 1);
                LoadDeckData(section::common(CurrentIndex));
            }
        } else if (Val(NumPLdecks->Text()) > CurrentPlayerDeck) {
            SaveDeckData(IsCommonDeck, CurrentPlayerDeck);
            CurrentPlayerDeck = static_cast<qint16>(CurrentPlayerDeck + 1);
            LoadDeckData(section::playerDeck(CurrentPlayerDeck, CurrentIndex));
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
    case page::PlayersInfo:
        CurrentFrame = page::GeneralInfo;
        break;
    case page::PlayersDetail:
        if (CurrentIndex > 1)
            CurrentIndex = static_cast<qint16>(CurrentIndex - 1);
        else
            CurrentFrame = page::PlayersInfo;
        break;
    case page::DecksInfo:
        CurrentFrame = page::PlayersInfo;
        break;
    case page::DecksDetail:
        if (IsCommonDeck) {
            if (CurrentIndex > 1) {
                SaveDeckData(IsCommonDeck, CurrentIndex);
                CurrentIndex = static_cast<qint16>(CurrentIndex - 1);
                LoadDeckData(section::common(CurrentIndex));
            } else {
                CurrentFrame = page::DecksInfo;
            }
        } else if (CurrentPlayerDeck > 1) {
            SaveDeckData(IsCommonDeck, CurrentPlayerDeck);
            CurrentPlayerDeck = static_cast<qint16>(CurrentPlayerDeck - 1);
            LoadDeckData(section::playerDeck(CurrentPlayerDeck, CurrentIndex));
        } else {
            CurrentFrame = page::PlayersDetail;
        }
        break;
    case page::Properties:
        SaveProperties(GameFilePath());
        CurrentFrame = page::DecksInfo;
        break;
    case page::ReportDetail:
        if (CurrentIndex > 0)
            CurrentIndex = static_cast<qint16>(CurrentIndex - 1);
        else
            CurrentFrame = page::Properties;
        break;
    default:
        break;
    }
    ShowFrame();
}
