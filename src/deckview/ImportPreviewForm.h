#pragma once
// What an import of a spreadsheet file will do to the deck on the page, shown
// before anything changes: cards added, changed, unchanged and removed, and
// every row or cell refused with its reason. Apply changes the deck in one step.

#include "runtime/Form.h"
#include "sheet/Csv.h"
#include "sheet/DeckContent.h"
#include "sheet/Import.h"

namespace deckview {

class ImportPreviewForm : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "ImportPreviewForm";
    static const rt::FormSpec& formSpec();
    ImportPreviewForm();

    // The file read, and the deck and folder it is matched against.
    void setInput(const QString& fileName, const sheet::CsvRead& csv);
    void Form_KeyPress(int& KeyAscii) override;
    void RemoveMissing_Click();
    void ApplyBtn_Click();

    rt::Label* summary = nullptr;
    rt::TextBox* details = nullptr;
    rt::CheckBox* RemoveMissing = nullptr;
    rt::CommandButton* ApplyBtn = nullptr;
    rt::CommandButton* CancelBtn = nullptr;

private:
    void plan();
    sheet::CsvRead m_csv;
    sheet::DeckContent m_deck;
    QStringList m_columns;
    QStringList m_images;
    sheet::ImportPlan m_plan;
};

} // namespace deckview
