#include "wizard/Globals.h"

namespace Globals {

qint32 CurrentFrame = 0;
qint32 PreviousFrame = 0;
qint16 CurrentIndex = 0;
qint16 CurrentPlayerDeck = 0;
qint16 IsCommonDeck = False;
std::vector<QString> CardProps(201);
qint16 CardCounter = 0;
QString SelectedImage;
qint32 TreeFrame = 0;
qint32 TreeIndex1 = 0;
qint32 TreeIndex2 = 0;

QString& cardProp(int n) {
    if (n < 0)
        n = 0;
    if (static_cast<size_t>(n) >= CardProps.size())
        CardProps.resize(static_cast<size_t>(n) + 1);
    return CardProps[static_cast<size_t>(n)];
}

void resetState() {
    CurrentFrame = 0;
    PreviousFrame = 0;
    CurrentIndex = 0;
    CurrentPlayerDeck = 0;
    IsCommonDeck = False;
    CardProps.assign(201, QString());
    CardCounter = 0;
    SelectedImage.clear();
    TreeFrame = 0;
    TreeIndex1 = 0;
    TreeIndex2 = 0;
    HelpMgmt::HelpVisible = 0;
    HelpMgmt::TipsClicks = 0;
    HelpMgmt::HelpLines.clear();
}

} // namespace Globals

namespace HelpMgmt {
qint16 HelpVisible = 0;
qint16 TipsClicks = 0;
QStringList HelpLines;
} // namespace HelpMgmt
