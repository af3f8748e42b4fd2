#pragma once
// The index of the whole game: every page, player, deck and report as a row,
// and a double click that tells MainForm where to go.

#include "runtime/Form.h"

#include <vector>

class TreeForm : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "TreeForm";
    TreeForm();

    void Form_Load() override;
    void GameList_DblClick();

    // Where a row that is more than a page leads.
    struct TreeRef {
        qint16 Owner = 0; // player from 1, or game::CommonDecksOwner
        qint16 Item = 0;  // deck from 1, report from 0
        qint16 Frame = 0; // the players, decks or report detail page
    };
    qint16 TreeRefCount = 0;
    // Fifty records at first; a game with more rows grows it.
    std::vector<TreeRef> TreeRefs;

    rt::ListBox* GameList = nullptr;

private:
    void addPageRow(const QString& text, qint16 frame);
    // False once the count of records has reached its highest value.
    bool addRecordRow(const QString& text, const TreeRef& ref);
};
