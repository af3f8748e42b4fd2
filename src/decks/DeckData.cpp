// One deck between its section of the game file and page 4.

#include "wizard/MainForm.h"

// Both arrive with the deck pages; navigation already calls them where a deck
// is left or reached.
void MainForm::LoadDeckData(const QString& section) { (void)section; }
void MainForm::SaveDeckData(bool isCommonDeck, qint16 deckId) {
    (void)isCommonDeck;
    (void)deckId;
}
