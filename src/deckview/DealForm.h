#pragma once
// "Try the deal": the deck on page 4 as it stands, saved or not, shuffled by
// a seed that is shown and can be typed again, dealt into the players' hands
// with the cards' pictures, one more card drawn into a chosen hand, and the
// exact odds of one hand. Nothing here writes to the game file.

#include "runtime/Form.h"
#include "sheet/DeckContent.h"

class QSortFilterProxyModel;

namespace rt {
class Table;
}

namespace deckview {

class HandsModel;
class OddsModel;

class DealForm : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "DealForm";
    static const rt::FormSpec& formSpec();
    DealForm();

    void Form_Load() override;
    // The deck on the page may have changed: the odds follow it, the deal on
    // the table stays until the next Deal, with a note.
    void follow();

    void DealBtn_Click();
    void ShuffleBtn_Click();
    void DrawBtn_Click();
    void DiscardBtn_Click();
    void GroupBtn_Click();
    void CopyBtn_Click();

    rt::Label* deckLabel = nullptr;
    rt::TextBox* SeedBox = nullptr;
    rt::CommandButton* DealBtn = nullptr;
    rt::CommandButton* ShuffleBtn = nullptr;
    rt::TextBox* HandsBox = nullptr;
    rt::TextBox* HandSizeBox = nullptr;
    rt::Table* hands = nullptr;
    rt::PictureBox* PileImg = nullptr;
    rt::Label* PileLabel = nullptr;
    rt::PictureBox* DiscardImg = nullptr;
    rt::Label* DiscardLabel = nullptr;
    rt::ComboBox* HandChoice = nullptr;
    rt::CommandButton* DrawBtn = nullptr;
    rt::CommandButton* DiscardBtn = nullptr;
    rt::Label* Notes = nullptr;
    rt::TextBox* AtLeastBox = nullptr;
    rt::CommandButton* GroupBtn = nullptr;
    rt::CommandButton* CopyBtn = nullptr;
    rt::Table* odds = nullptr;

    HandsModel* handsModel() const { return m_hands; }
    OddsModel* oddsModel() const { return m_odds; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void computeOdds();
    void showTable();
    void showPictures();
    void showNotes();
    void layoutControls();

    HandsModel* m_hands;
    OddsModel* m_odds;
    QSortFilterProxyModel* m_sorted;
    sheet::DeckContent m_content; // the deck as the last deal or odds read it
    QStringList m_dealNotes;      // of the deal on the table
    QStringList m_oddsNotes;
    QString m_action; // what the last press could not do
    bool m_stale = false;
};

} // namespace deckview
