#pragma once
// The wizard's one main form. Its pages' handlers are all members of this
// class; each subsystem folder defines the handlers of its own pages.

#include "runtime/Form.h"

#include <array>

class MainForm : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "MainForm";
    MainForm();

    void Form_Load() override;
    void Form_Unload() override;

    // Which page is up, Forward and Back.
    void ShowFrame();
    void NextStep_Click();
    void PrevStep_Click();

    // General Info page and start-up.
    void LoadDirList();
    void NameTXT_Click();
    void NameTXT_KeyPress(int& KeyAscii);
    void NameTXT_Validate(bool& Cancel);
    void NewDirBtn_Click();
    void SetDesktopImage_Click();
    void Command10_Click();

    // The game's general data, the check and the save.
    void SaveGameData(const QString& file);
    void LoadGameData();
    void LoadGameDialog();
    void CheckAndSave();

    // Players Info page.
    void PlNum_Change();
    void PlNum_Validate(bool& Cancel);
    void UpdatePlayerList();
    void PL_data_Click(int Index);

    // Players Detail page.
    void LoadPlayerData();
    void NumPLdecks_Change();
    void ShowPlayerDeck_Click(int Index);
    void MrkUseOption_Click();

    // Decks Info page.
    void CommDecksNum_Change();
    void CommDecksNum_Validate(bool& Cancel);
    void ShowCommonDeck_Click(int Index);

    // Decks Detail page, and the open deck between its section and the page.
    void LoadDeckData(const QString& section);
    void SaveDeckData(bool isCommonDeck, qint16 deckId);
    // The same into the file given: a save of the whole game names its file once.
    void SaveDeckData(bool isCommonDeck, qint16 deckId, const QString& file);
    void UpdateCardCount();
    void Command1_Click();
    void Command6_Click();
    void Command7_Click();
    void Command3_Click();
    void Command4_Click();
    void Command8_Click();
    void Command5_Click();
    void Command11_Click();
    void Command9_Click();
    void File1_DblClick();
    void commonList_DblClick();
    void commonList_KeyPress(int& KeyAscii);
    void ShowSelectedImage();

    // Property lists and reports.
    void showProperties();
    void UsePropOpt_Click();
    void SaveProperties(const QString& file);
    void LoadReportCount();
    void repNum_Change();
    void ShowReport_Click(int Index);
    void DisplayReport(qint16 index);

    // Guidance.
    void HideHelp();
    void ShowStartTips();
    void LoadHelpBoxes();
    void ToggleHelp();
    void DrawHelpText(const QString& text, int index);
    void TreeBtn_Click();

    // The whole-game check, and the jump to a page that it shares with the index.
    void CheckGameBtn_Click();
    bool hasUnsavedEdits();
    void jumpTo(qint32 targetPage, int index1, int index2);

    // Shows a failed write of the game file; an empty text clears it.
    void showStatus(const QString& text);

    // Outside the pages.
    std::array<rt::Frame*, 8> Wiz{};
    rt::PictureBox* helpLabel0 = nullptr;
    rt::Frame* buttonFrame = nullptr;
    rt::CommandButton* PrevStep = nullptr;
    rt::CommandButton* NextStep = nullptr;
    rt::CommandButton* TreeBtn = nullptr;
    rt::CommandButton* Command2 = nullptr;
    rt::CommandButton* HelpBtn = nullptr;
    rt::Label* statusLine = nullptr;
    rt::CommandButton* CheckGameBtn = nullptr;

    // General Info.
    rt::ComboBox* NameTXT = nullptr;
    rt::CommandButton* Command10 = nullptr;
    rt::CommonDialog* dialog1 = nullptr;
    rt::TextBox* descTxt = nullptr;
    rt::ComboBox* DirName = nullptr;
    rt::CommandButton* NewDirBtn = nullptr;
    rt::Label* DeskTopImage = nullptr;
    rt::CommandButton* SetDesktopImage = nullptr;
    rt::Label* mainHelp = nullptr;

    // Players Info.
    rt::TextBox* PlNum = nullptr;
    std::array<rt::Label*, 6> PLlabel{};
    std::array<rt::TextBox*, 6> PLname{};
    std::array<rt::CommandButton*, 6> PL_data{};

    // Players Detail.
    rt::TextBox* NumPLdecks = nullptr;
    std::array<rt::CommandButton*, 6> ShowPlayerDeck{};
    rt::CheckBox* MrkUseOption = nullptr;
    rt::CommandButton* ShowMarkersBtn = nullptr;

    // Decks Info.
    rt::TextBox* CommDecksNum = nullptr;
    std::array<rt::CommandButton*, 6> ShowCommonDeck{};

    // Decks Detail.
    rt::CommandButton* Command9 = nullptr;
    rt::TextBox* DealCrds = nullptr;
    rt::CommandButton* Command11 = nullptr;
    rt::FileListBox* File1 = nullptr;
    rt::CommandButton* Command8 = nullptr;
    rt::CommandButton* Command5 = nullptr;
    rt::CommandButton* Command1 = nullptr;
    rt::CommandButton* Command6 = nullptr;
    rt::ListBox* commonList = nullptr;
    rt::CommandButton* Command7 = nullptr;
    rt::Label* commLabel = nullptr;
    rt::CommandButton* Command3 = nullptr;
    rt::ListBox* backImg = nullptr;
    rt::CommandButton* Command4 = nullptr;
    rt::ListBox* discardImg = nullptr;

    // Properties and reports.
    rt::CheckBox* UsePropOpt = nullptr;
    rt::Frame* pNameFrame = nullptr;
    std::array<rt::Label*, 28> lbl{};
    std::array<rt::TextBox*, 4> pListName{};
    std::array<rt::TextBox*, 24> pName{};
    rt::Frame* repFrame = nullptr;
    rt::TextBox* repNum = nullptr;
    std::array<rt::CommandButton*, 8> ShowReport{};

    // Report Detail.
    rt::TextBox* RepTitle = nullptr;
    rt::ComboBox* repType = nullptr;
    rt::ComboBox* repScope = nullptr;
    rt::ComboBox* RepPropName = nullptr;
    rt::CheckBox* RepOnlyOwned = nullptr;

private:
    void bindControls();
    void wireEvents();
    // Whether the control that a help note waits for is still empty.
    bool helpControlEmpty(const QString& name) const;
};

// The one MainForm while the program runs, or nullptr.
MainForm* mainForm();
