#pragma once
// The findings of the whole-game check, grouped by the page, player, deck or
// report they belong to; a double click goes there the way the index does.

#include "check/Finding.h"
#include "game/GameFile.h"
#include "runtime/Form.h"

#include <vector>

class GameCheckForm : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "GameCheckForm";
    static const rt::FormSpec& formSpec();
    GameCheckForm();

    void Form_Load() override;
    void Form_KeyPress(int& KeyAscii) override;
    void Findings_DblClick();
    // Said at the top when the pages hold changes that the file does not have.
    void showUnsaved(bool unsaved);

    // Where the user chose to go, read by MainForm once the form is gone.
    struct Target {
        qint32 page = game::page::None; // None: stay
        int index1 = 0;                 // as the index's TreeIndex1
        int index2 = 0;                 // as the index's TreeIndex2
    };
    static Target choice;

    rt::Label* unsavedNote = nullptr;
    rt::ListBox* Findings = nullptr;
    rt::Label* summary = nullptr;

private:
    void fill(const check::GameReport& report);
    std::vector<Target> m_targets; // by the rows' ItemData
};
