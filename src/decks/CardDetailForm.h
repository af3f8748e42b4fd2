#pragma once
// The Card Detail dialog: the copies of one card of the deck on page 4 and its
// values for the properties of a list.

#include "runtime/Form.h"

#include <array>

class CardDetailForm : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "CardDetailForm";
    CardDetailForm();

    void Form_Load() override;
    void Form_KeyPress(int& KeyAscii) override;
    void pListNames_Click();
    void Command1_Click();
    void Command2_Click();

    rt::Label* Label1 = nullptr;
    rt::TextBox* CrdX = nullptr;
    rt::CommandButton* Command2 = nullptr;
    rt::CommandButton* Command1 = nullptr;
    rt::Frame* propFrame = nullptr;
    rt::ComboBox* pListNames = nullptr;
    std::array<rt::Label*, 6> lbl{};
    std::array<rt::TextBox*, 6> pName{};

private:
    // The row of commonList that the dialog was opened on, or -1 once it is
    // gone. The dialog can stay open beside the wizard while rows are removed
    // and the selection moves, so the row is found anew by its slot each time.
    int cardRow() const;
    // The card's property text, "" once its row is gone.
    QString cardProperties() const;

    qint32 m_slot = -1;
    // A list that is emptied (a deck loaded, "clear") takes the card with it,
    // even though a new row may come to hold the same slot number.
    bool m_listEmptied = false;
};
