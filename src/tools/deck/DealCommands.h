#pragma once
// zavik-deck's odds and deal: the chances of a hand and one seeded deal of a
// deck as the game file holds it, the same as the deal window shows them.

#include <QHash>
#include <QString>

namespace deckcli {

struct DealArgs {
    QString game, section;
    QHash<QString, QString> options; // "--hand" -> "5"; "--json" -> ""
};

// The options that take a value, and those that stand alone.
bool takesValue(const QString& option);
bool dealOption(const QString& option);

// Exit status: 0 done, 2 a bad option value.
int oddsCommand(const DealArgs& args);
int dealCommand(const DealArgs& args);

} // namespace deckcli
