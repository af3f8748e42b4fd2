#pragma once
// What the rule families of the check share: the file, where its lines are,
// the image directory, the counts read so far and the findings.

#include "check/Finding.h"
#include "check/LineIndex.h"
#include "store/ProfileDocument.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace check::detail {

// A text that is a whole number, as a count must be; nothing otherwise.
std::optional<qint64> wholeNumber(const QString& text);

QString quoted(const QString& text);

struct ImageFolder {
    QString name;                         // as the game names it
    QString problem;                      // why it cannot be listed, or empty
    QHash<QString, bool> files;           // every file name in it -> used by the game
    QHash<QString, QString> byFoldedName; // lower case -> name on disk
    QStringList images;                   // the files of an image kind, in order
    QStringList unlisted;                 // pictures of a kind the wizard does not list
};

enum class ImageState { Found, OtherCase, Missing, NotLooked };
struct ImageLookup {
    ImageState state = ImageState::NotLooked;
    QString onDisk; // the name in the directory, for another letter case
};

struct Deck {
    bool common = true;
    int player = 0;
    int number = 0;
    QString section;
    Where where() const { return common ? Where::CommonDeck : Where::PlayerDeck; }
    QString words() const; // "common deck 2", "deck 1 of player 3"
};

class Context {
public:
    Context(const QString& file, const QByteArray& bytes);

    QString read(const QString& section, const QString& key) const;
    Place place(Where where, const QString& section, const QString& key = QString(), int player = 0,
                int deck = 0, int report = 0) const;
    Place place(const Deck& deck, const QString& key = QString()) const;
    void add(Severity severity, const Place& place, const QString& message);

    // Looks an image name up in the directory and records it as used.
    ImageLookup lookUpImage(const QString& name);
    // The finding of a lookup that did not find the name as it stands.
    void reportImage(const ImageLookup& lookup, const QString& name, const Place& where,
                     const QString& whose);
    void checkImage(const QString& name, const Place& where, const QString& whose);

    QString file;
    // Values come from the profile reader itself, parsed once from the same
    // bytes as the line index, so the two always agree.
    store::detail::ProfileDocument document;
    LineIndex index;
    ImageFolder images;
    int players = 0;             // in use, 0 to 6
    int commonDecks = 0;         // in use, 0 to 6
    int playerDecks[7] = {};     // in use, per player from 1
    int lists = 0;               // property lists in use
    // Of the lists in use, each once. A list, not a set: every card looks its
    // property names up, and a few names compare faster than they hash.
    QStringList propertyNames;
    bool hasProperty(QStringView name) const;
    std::vector<Finding> findings;
};

// The rule families, in the order their findings come out.
void checkGameSection(Context& context);
void checkPlayers(Context& context);
void checkPropertyLists(Context& context);
void checkDecks(Context& context);
void checkReports(Context& context);
void checkUnusedImages(Context& context);
void checkLeftovers(Context& context);
void checkLongValues(Context& context);

} // namespace check::detail
