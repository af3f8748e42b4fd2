#include "wizard/MainForm.h"
#include "game/GameFile.h"

#include "runtime/FileSystem.h"
#include "runtime/Runtime.h"
#include "wizard/Catalogue.h"
#include "wizard/Globals.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>

namespace {
QPointer<MainForm> g_mainForm;
} // namespace

MainForm* mainForm() {
    return g_mainForm.data();
}

MainForm::MainForm() : rt::Form(wizard::mainFormSpec()) {
    g_mainForm = this;
    bindControls();
    wireEvents();
}

void MainForm::bindControls() {
    for (int i = 0; i < 8; ++i)
        Wiz[i] = get<rt::Frame>("Wiz", i);
    helpLabel0 = get<rt::PictureBox>("helpLabel", 0);
    buttonFrame = get<rt::Frame>("buttonFrame");
    PrevStep = get<rt::CommandButton>("PrevStep");
    NextStep = get<rt::CommandButton>("NextStep");
    TreeBtn = get<rt::CommandButton>("TreeBtn");
    Command2 = get<rt::CommandButton>("Command2");
    HelpBtn = get<rt::CommandButton>("HelpBtn");
    statusLine = get<rt::Label>("statusLine");
    CheckGameBtn = get<rt::CommandButton>("CheckGameBtn");

    NameTXT = get<rt::ComboBox>("NameTXT");
    Command10 = get<rt::CommandButton>("Command10");
    dialog1 = get<rt::CommonDialog>("dialog1");
    descTxt = get<rt::TextBox>("descTxt");
    DirName = get<rt::ComboBox>("DirName");
    NewDirBtn = get<rt::CommandButton>("NewDirBtn");
    DeskTopImage = get<rt::Label>("DeskTopImage");
    SetDesktopImage = get<rt::CommandButton>("SetDesktopImage");
    mainHelp = get<rt::Label>("mainHelp");

    PlNum = get<rt::TextBox>("PlNum");
    for (int i = 0; i < 6; ++i) {
        PLlabel[i] = get<rt::Label>("PLlabel", i);
        PLname[i] = get<rt::TextBox>("PLname", i);
        PL_data[i] = get<rt::CommandButton>("PL_data", i);
        ShowPlayerDeck[i] = get<rt::CommandButton>("ShowPlayerDeck", i);
        ShowCommonDeck[i] = get<rt::CommandButton>("ShowCommonDeck", i);
    }
    NumPLdecks = get<rt::TextBox>("NumPLdecks");
    MrkUseOption = get<rt::CheckBox>("MrkUseOption");
    ShowMarkersBtn = get<rt::CommandButton>("ShowMarkersBtn");
    CommDecksNum = get<rt::TextBox>("CommDecksNum");

    Command9 = get<rt::CommandButton>("Command9");
    DealCrds = get<rt::TextBox>("DealCrds");
    Command11 = get<rt::CommandButton>("Command11");
    File1 = get<rt::FileListBox>("File1");
    Command8 = get<rt::CommandButton>("Command8");
    Command5 = get<rt::CommandButton>("Command5");
    Command1 = get<rt::CommandButton>("Command1");
    Command6 = get<rt::CommandButton>("Command6");
    commonList = get<rt::ListBox>("commonList");
    Command7 = get<rt::CommandButton>("Command7");
    commLabel = get<rt::Label>("commLabel");
    Command3 = get<rt::CommandButton>("Command3");
    backImg = get<rt::ListBox>("backImg");
    Command4 = get<rt::CommandButton>("Command4");
    discardImg = get<rt::ListBox>("discardImg");

    UsePropOpt = get<rt::CheckBox>("UsePropOpt");
    pNameFrame = get<rt::Frame>("pNameFrame");
    for (int i = 0; i < 28; ++i)
        lbl[i] = get<rt::Label>("lbl", i);
    for (int i = 0; i < 4; ++i)
        pListName[i] = get<rt::TextBox>("pListName", i);
    for (int i = 0; i < 24; ++i)
        pName[i] = get<rt::TextBox>("pName", i);
    repFrame = get<rt::Frame>("repFrame");
    repNum = get<rt::TextBox>("repNum");
    for (int i = 0; i < 8; ++i)
        ShowReport[i] = get<rt::CommandButton>("ShowReport", i);

    RepTitle = get<rt::TextBox>("RepTitle");
    repType = get<rt::ComboBox>("repType");
    repScope = get<rt::ComboBox>("repScope");
    RepPropName = get<rt::ComboBox>("RepPropName");
    RepOnlyOwned = get<rt::CheckBox>("RepOnlyOwned");
}

void MainForm::wireEvents() {
    NextStep->Click = [this] { NextStep_Click(); };
    PrevStep->Click = [this] { PrevStep_Click(); };
    Command2->Click = [this] { CheckAndSave(); };
    helpLabel0->Click = [this] { HideHelp(); };
    mainHelp->Click = [this] { ShowStartTips(); };
    HelpBtn->Click = [this] { ToggleHelp(); };
    TreeBtn->Click = [this] { TreeBtn_Click(); };
    CheckGameBtn->Click = [this] { CheckGameBtn_Click(); };

    NameTXT->Click = [this] { NameTXT_Click(); };
    NameTXT->KeyPress = [this](int& k) { NameTXT_KeyPress(k); };
    NameTXT->Validate = [this](bool& cancel) { NameTXT_Validate(cancel); };
    Command10->Click = [this] { Command10_Click(); };
    NewDirBtn->Click = [this] { NewDirBtn_Click(); };
    SetDesktopImage->Click = [this] { SetDesktopImage_Click(); };

    PlNum->Change = [this] { PlNum_Change(); };
    PlNum->Validate = [this](bool& cancel) { PlNum_Validate(cancel); };
    for (int i = 0; i < 6; ++i)
        PL_data[i]->Click = [this, i] { PL_data_Click(i); };

    NumPLdecks->Change = [this] { NumPLdecks_Change(); };
    MrkUseOption->Click = [this] { MrkUseOption_Click(); };
    CommDecksNum->Change = [this] { CommDecksNum_Change(); };
    CommDecksNum->Validate = [this](bool& cancel) { CommDecksNum_Validate(cancel); };
    for (int i = 0; i < 6; ++i) {
        ShowPlayerDeck[i]->Click = [this, i] { ShowPlayerDeck_Click(i); };
        ShowCommonDeck[i]->Click = [this, i] { ShowCommonDeck_Click(i); };
    }

    Command1->Click = [this] { Command1_Click(); };
    Command6->Click = [this] { Command6_Click(); };
    Command7->Click = [this] { Command7_Click(); };
    Command3->Click = [this] { Command3_Click(); };
    Command4->Click = [this] { Command4_Click(); };
    Command8->Click = [this] { Command8_Click(); };
    Command5->Click = [this] { Command5_Click(); };
    Command11->Click = [this] { Command11_Click(); };
    Command9->Click = [this] { Command9_Click(); };
    File1->DblClick = [this] { File1_DblClick(); };
    commonList->DblClick = [this] { commonList_DblClick(); };
    commonList->KeyPress = [this](int& k) { commonList_KeyPress(k); };

    UsePropOpt->Click = [this] { UsePropOpt_Click(); };
    repNum->Change = [this] { repNum_Change(); };
    for (int i = 0; i < 8; ++i)
        ShowReport[i]->Click = [this, i] { ShowReport_Click(i); };
}

void MainForm::Form_Load() {
    using namespace Globals;
    // The games of the folder, in the order the folder lists them.
    for (QString name = rt::Dir(rt::AppPath() + QStringLiteral("/*.game"), rt::vbNormal);
         !name.isEmpty(); name = rt::Dir())
        NameTXT->AddItem(name.left(name.size() - 5));
    ShowStartTips();
    CurrentFrame = game::page::GeneralInfo;
    PreviousFrame = game::page::None;
    ShowFrame();
    LoadDirList();
    LoadHelpBoxes();
}

void MainForm::Form_Unload() {
    // Closing the main form ends the program: the other forms go with it.
    for (rt::Form* form : rt::loadedForms())
        if (form != this)
            form->Unload();
    QCoreApplication::quit();
}

void MainForm::showStatus(const QString& text) {
    statusLine->setCaption(text);
    // One line in the status bar, whatever the message holds; whole on hover.
    if (auto* label = qobject_cast<QLabel*>(statusLine->widget()))
        label->setText(text.simplified());
    statusLine->widget()->setToolTip(text);
}
