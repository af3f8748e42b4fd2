#pragma once
// Module state shared by the pages and the forms: which page is up, what it
// works on, and what the small forms hand back.

#include <QString>
#include <QStringList>
#include <vector>

namespace Globals {

inline constexpr qint16 True = -1;
inline constexpr qint16 False = 0;

extern qint32 CurrentFrame;
extern qint32 PreviousFrame;
extern qint16 CurrentIndex;
extern qint16 CurrentPlayerDeck;
extern qint16 IsCommonDeck;

// Property texts of the open deck's cards, slots numbered from 1; the table
// grows past its 200 slots rather than refuse a card.
extern std::vector<QString> CardProps;
extern qint16 CardCounter;

extern QString SelectedImage;
extern qint32 TreeFrame;
extern qint32 TreeIndex1;
extern qint32 TreeIndex2;

// Slot n of CardProps, growing the table when n lies past its end.
QString& cardProp(int n);

// Everything back to its value at program start.
void resetState();

} // namespace Globals

namespace HelpMgmt {
extern qint16 HelpVisible;
extern qint16 TipsClicks;
extern QStringList HelpLines;
} // namespace HelpMgmt
