#pragma once
// What the whole-game check says about one game file.

#include <QString>

#include <vector>

namespace check {

// Error: the engine or the wizard will read something other than what the
// designer meant. Warning: probably a mistake. Note: leftovers nothing reads.
enum class Severity { Error, Warning, Note };

// The part of the game a finding belongs to, so that a viewer can bring up
// the page where it is mended.
enum class Where { Game, Player, CommonDeck, PlayerDeck, PropertyLists, Report };

struct Place {
    Where where = Where::Game;
    int player = 0; // from 1, for a player and a player's deck
    int deck = 0;   // from 1, for a deck
    int report = 0; // from 1, for a report
    QString section;
    QString key;
    int line = 0; // from 1; 0 when the file holds nothing to point at
};

struct Finding {
    Severity severity = Severity::Error;
    Place place;
    QString message;
};

struct GameReport {
    QString file;
    // Empty when the file could be read; otherwise why not, and no findings.
    QString unreadable;
    std::vector<Finding> findings;

    int count(Severity severity) const;
};

QString severityName(Severity severity);

} // namespace check
