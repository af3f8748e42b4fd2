#pragma once
// The deck sheet: the deck on page 4 as a table beside the wizard, a row for
// each card, its copies and a column for each property, edited in place as in
// a spreadsheet; several rows selected take one value at once.

#include "runtime/Form.h"

namespace rt {
class Table;
}

namespace deckview {

class DeckSheetModel;

class DeckSheetForm : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "DeckSheetForm";
    static const rt::FormSpec& formSpec();
    DeckSheetForm();

    void Form_Load() override;
    // The deck on the page may have changed: title, buttons and cells anew.
    void follow();
    // Beside the wizard where the screen has room, so that page 4 stays in view.
    void placeBeside(const QWidget* main);

    // A cell typed over: the copies or a property value of the row, or of
    // every selected row when the row is one of them.
    void cards_CellEdit(int row, int col, const QString& text);
    void AddBtn_Click();
    void RemoveBtn_Click();

    rt::Label* deckLabel = nullptr;
    rt::Table* cards = nullptr;
    rt::CommandButton* AddBtn = nullptr;
    rt::CommandButton* RemoveBtn = nullptr;
    rt::CommandButton* ImportBtn = nullptr;
    rt::CommandButton* ExportBtn = nullptr;
    DeckSheetModel* model() const { return m_model; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    std::vector<int> targetRows(int row) const;
    void layoutControls();
    DeckSheetModel* m_model;
};

} // namespace deckview
